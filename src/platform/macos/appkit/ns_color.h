#pragma once

#include "macos/foundation/ns_string.h"

namespace velmo::macos {

class NSColor : public ClassOf<NSColor, "NSColor", NSObject> {
public:
    static NSColor black() { return sendToClass<NSColor, "blackColor">(); }
    static NSColor white() { return sendToClass<NSColor, "whiteColor">(); }
    static NSColor clear() { return sendToClass<NSColor, "clearColor">(); }
    static NSColor label() { return sendToClass<NSColor, "labelColor">(); }
    static NSColor secondaryLabel() { return sendToClass<NSColor, "secondaryLabelColor">(); }
    static NSColor controlAccent() { return sendToClass<NSColor, "controlAccentColor">(); }
    static NSColor systemRed() { return sendToClass<NSColor, "systemRedColor">(); }
    static NSColor systemGreen() { return sendToClass<NSColor, "systemGreenColor">(); }
    static NSColor systemOrange() { return sendToClass<NSColor, "systemOrangeColor">(); }

    NSColor withAlpha(CGFloat alpha) const { return send<NSColor, "colorWithAlphaComponent:">(alpha); }
    /// Of what is drawn from now on.
    void setFill() const { send<void, "setFill">(); }
};

}  // namespace velmo::macos
