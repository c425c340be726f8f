#pragma once

#include "text_style.h"

namespace velmo {

/// The size of a text style in a font whose body has the size 1.
constexpr double styleSize(TextStyle style) {
    switch (style) {
        case TextStyle::body:
        case TextStyle::headline:
            return 1;
        case TextStyle::callout:
            return 12.0 / 13;
        case TextStyle::caption:
            return 11.0 / 13;
        case TextStyle::caption2:
            return 10.0 / 13;
    }
    return 1;
}

}  // namespace velmo
