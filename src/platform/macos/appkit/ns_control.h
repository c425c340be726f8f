#pragma once

#include "macos/foundation/ns_attributed_string.h"
#include "macos/foundation/ns_range.h"
#include "ns_cell.h"
#include "ns_event.h"
#include "ns_font.h"
#include "ns_view.h"

namespace velmo::macos {

enum class NSControlSize : NSUInteger { small = 1 };

template <>
inline constexpr std::string_view frameworkName<NSControlSize> = "NSControlSize";

/// What edits the text of a field that has the keyboard.
class NSText : public ClassOf<NSText, "NSText", NSView> {
public:
    NSRange selectedRange() const { return send<NSRange, "selectedRange">(); }
    void setSelectedRange(const NSRange& range) const { send<void, "setSelectedRange:">(range); }
};

class NSControl : public ClassOf<NSControl, "NSControl", NSView> {
public:
    bool isEnabled() const { return send<bool, "isEnabled">(); }
    void setEnabled(bool enabled) const { send<void, "setEnabled:">(enabled); }
    NSFont font() const { return send<NSFont, "font">(); }
    void setFont(const NSFont& font) const { send<void, "setFont:">(font); }
    void setControlSize(NSControlSize size) const { send<void, "setControlSize:">(size); }
    /// Not retained.
    void setTarget(const Object& target) const { send<void, "setTarget:">(target); }
    /// Has the target perform the action.
    void performAction() const {
        send<bool, "sendAction:to:">(send<Selector, "action">(), send<Object, "target">());
    }
    void setAction(Selector action) const { send<void, "setAction:">(action); }
    void sendActionOn(NSEventMask mask) const { send<NSInteger, "sendActionOn:">(mask); }

    NSString stringValue() const { return send<NSString, "stringValue">(); }
    void setStringValue(const NSString& text) const { send<void, "setStringValue:">(text); }
    void setAttributedStringValue(const NSAttributedString& text) const {
        send<void, "setAttributedStringValue:">(text);
    }
    double doubleValue() const { return send<double, "doubleValue">(); }
    void setDoubleValue(double value) const { send<void, "setDoubleValue:">(value); }

    NSCell cell() const { return send<NSCell, "cell">(); }
    /// None while it does not have the keyboard.
    NSText currentEditor() const { return send<NSText, "currentEditor">(); }
};

}  // namespace velmo::macos
