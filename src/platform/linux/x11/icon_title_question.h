#pragma once

#include "linux/x11/property_question.h"

#include <optional>
#include <string>

namespace velmo::x11 {

/// Asks what a program calls its icon window. The answer is to be taken once.
class IconTitleQuestion {
public:
    IconTitleQuestion(const Connection& connection, xcb_window_t client);

    /// In UTF-8, cut off where it is long. Absent where it has none.
    std::optional<std::string> answer() const;

private:
    PropertyQuestion title_;
    PropertyQuestion olderTitle_;
};

}  // namespace velmo::x11
