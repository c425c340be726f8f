#pragma once

#include "macos/core_graphics/cg_rect.h"
#include "macos/foundation/ns_string.h"
#include "macos/objc/block.h"
#include "ns_image_symbol_configuration.h"

namespace velmo::macos {

class NSImage : public ClassOf<NSImage, "NSImage", NSObject> {
public:
    /// None where the system has no such symbol.
    static NSImage symbol(const NSString& name, const NSString& description) {
        return sendToClass<NSImage, "imageWithSystemSymbolName:accessibilityDescription:">(name, description);
    }
    /// The handler draws it whenever the system needs it at some scale. True: it has drawn.
    static NSImage drawn(const CGSize& size, bool flipped, const Block<bool(CGRect)>& handler) {
        return sendToClass<NSImage, "imageWithSize:flipped:drawingHandler:">(size, flipped, handler);
    }
    /// Of a CGImage.
    static NSImage with(Id image, const CGSize& size) { return make<"initWithCGImage:size:">(image, size); }

    /// Points.
    CGSize size() const { return send<CGSize, "size">(); }
    NSImage withConfiguration(const NSImageSymbolConfiguration& configuration) const {
        return send<NSImage, "imageWithSymbolConfiguration:">(configuration);
    }
    void setTemplate(bool isTemplate) const { send<void, "setTemplate:">(isTemplate); }
    void setAccessibilityDescription(const NSString& text) const {
        send<void, "setAccessibilityDescription:">(text);
    }
};

}  // namespace velmo::macos
