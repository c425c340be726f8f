#pragma once

#include <string>

#include "platform/user_defaults.h"

namespace velmo {

/// A text as the defaults keep data.
inline Data bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

}  // namespace velmo
