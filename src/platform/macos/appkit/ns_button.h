#pragma once

#include "ns_control.h"
#include "ns_image.h"

namespace velmo::macos {

/// Of buttons and switches.
namespace control_state {
inline constexpr NSInteger off = 0;
inline constexpr NSInteger on = 1;
}  // namespace control_state

enum class NSButtonType : NSUInteger { radio = 4, momentaryPushIn = 7 };
enum class NSBezelStyle : NSUInteger { push = 1 };
enum class NSCellImagePosition : NSUInteger { noImage = 0, imageOnly = 1 };

template <>
inline constexpr std::string_view frameworkName<NSButtonType> = "NSButtonType";
template <>
inline constexpr std::string_view frameworkName<NSBezelStyle> = "NSBezelStyle";
template <>
inline constexpr std::string_view frameworkName<NSCellImagePosition> = "NSCellImagePosition";

class NSButton : public ClassOf<NSButton, "NSButton", NSControl> {
public:
    static NSButton create() { return make<"initWithFrame:">(CGRect{}); }

    void setTitle(const NSString& title) const { send<void, "setTitle:">(title); }
    void setImage(const NSImage& image) const { send<void, "setImage:">(image); }
    void setImagePosition(NSCellImagePosition position) const { send<void, "setImagePosition:">(position); }
    /// Of title and template image where there is no border.
    void setContentTintColor(const NSColor& color) const { send<void, "setContentTintColor:">(color); }
    void setButtonType(NSButtonType type) const { send<void, "setButtonType:">(type); }
    void setBezelStyle(NSBezelStyle style) const { send<void, "setBezelStyle:">(style); }
    void setBordered(bool bordered) const { send<void, "setBordered:">(bordered); }
    /// It draws nothing and can be pressed all the same.
    void setTransparent(bool transparent) const { send<void, "setTransparent:">(transparent); }
    /// One of `control_state`.
    NSInteger state() const { return send<NSInteger, "state">(); }
    void setState(NSInteger state) const { send<void, "setState:">(state); }
    void setKeyEquivalent(const NSString& characters) const { send<void, "setKeyEquivalent:">(characters); }
    void setKeyEquivalentModifierMask(NSEventModifierFlags flags) const {
        send<void, "setKeyEquivalentModifierMask:">(flags);
    }
};

class NSSwitch : public ClassOf<NSSwitch, "NSSwitch", NSControl> {
public:
    static NSSwitch create() { return make<"initWithFrame:">(CGRect{}); }

    /// One of `control_state`.
    NSInteger state() const { return send<NSInteger, "state">(); }
    void setState(NSInteger state) const { send<void, "setState:">(state); }
};

}  // namespace velmo::macos
