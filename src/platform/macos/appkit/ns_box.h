#pragma once

#include "ns_view.h"

namespace velmo::macos {

enum class NSBoxType : NSUInteger { primary = 0, separator = 2 };
enum class NSTitlePosition : NSUInteger { noTitle = 0 };

template <>
inline constexpr std::string_view frameworkName<NSBoxType> = "NSBoxType";
template <>
inline constexpr std::string_view frameworkName<NSTitlePosition> = "NSTitlePosition";

/// Made as decoration, of which assistive programs are told nothing.
class NSBox : public ClassOf<NSBox, "NSBox", NSView> {
public:
    static NSBox with(NSBoxType type) {
        NSBox made = make<"initWithFrame:">(CGRect{});
        made.send<void, "setBoxType:">(type);
        made.send<void, "setTitlePosition:">(NSTitlePosition::noTitle);
        made.setAccessibilityElement(false);
        return made;
    }
};

}  // namespace velmo::macos
