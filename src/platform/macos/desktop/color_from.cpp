#include "color_from.h"

namespace velmo::macos {

NSColor colorFrom(ColorRole role) {
    switch (role) {
        case ColorRole::clear:
            return NSColor::clear();
        case ColorRole::secondary:
            return NSColor::secondaryLabel();
        case ColorRole::accent:
            return NSColor::controlAccent();
        case ColorRole::white:
            return NSColor::white();
        case ColorRole::red:
            return NSColor::systemRed();
        case ColorRole::green:
            return NSColor::systemGreen();
        case ColorRole::orange:
            return NSColor::systemOrange();
        case ColorRole::primary:
            break;
    }
    return NSColor::label();
}

}  // namespace velmo::macos
