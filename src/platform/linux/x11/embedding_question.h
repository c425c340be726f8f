#pragma once

#include "linux/x11/property_question.h"

namespace velmo::x11 {

/// Asks whether a program wants its icon window to be seen. The answer is to be taken once.
class EmbeddingQuestion {
public:
    EmbeddingQuestion(const Connection& connection, xcb_window_t client);

    /// True also where it does not say.
    bool answer() const;

private:
    PropertyQuestion info_;
};

}  // namespace velmo::x11
