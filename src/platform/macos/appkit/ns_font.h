#pragma once

#include "macos/foundation/ns_dictionary.h"
#include "macos/objc/global.h"

namespace velmo::macos {

extern "C" {
extern const double NSFontWeightRegular;
extern const double NSFontWeightMedium;
extern const double NSFontWeightSemibold;
extern const double NSFontWeightBold;
extern const Id NSFontTextStyleBody;
extern const Id NSFontTextStyleHeadline;
extern const Id NSFontTextStyleCallout;
extern const Id NSFontTextStyleCaption1;
extern const Id NSFontTextStyleCaption2;
extern const Id NSFontAttributeName;
extern const Id NSForegroundColorAttributeName;
}

inline constexpr Global<&NSFontWeightRegular, double> regularWeight;
inline constexpr Global<&NSFontWeightMedium, double> mediumWeight;
inline constexpr Global<&NSFontWeightSemibold, double> semiboldWeight;
inline constexpr Global<&NSFontWeightBold, double> boldWeight;
inline constexpr Global<&NSFontTextStyleBody, NSString> bodyStyle;
inline constexpr Global<&NSFontTextStyleHeadline, NSString> headlineStyle;
inline constexpr Global<&NSFontTextStyleCallout, NSString> calloutStyle;
inline constexpr Global<&NSFontTextStyleCaption1, NSString> captionStyle;
inline constexpr Global<&NSFontTextStyleCaption2, NSString> caption2Style;
// Keys of a text's attributes.
inline constexpr Global<&NSFontAttributeName, NSString> fontAttribute;
inline constexpr Global<&NSForegroundColorAttributeName, NSString> colorAttribute;

class NSFont : public ClassOf<NSFont, "NSFont", NSObject> {
public:
    /// Points, of what has no size of its own.
    static CGFloat systemSize() { return sendToClass<CGFloat, "systemFontSize">(); }
    static NSFont preferred(const NSString& textStyle) {
        return sendToClass<NSFont, "preferredFontForTextStyle:options:">(textStyle, NSDictionary::create());
    }
    static NSFont system(CGFloat size, CGFloat weight) {
        return sendToClass<NSFont, "systemFontOfSize:weight:">(size, weight);
    }
    static NSFont monospacedDigits(CGFloat size, CGFloat weight) {
        return sendToClass<NSFont, "monospacedDigitSystemFontOfSize:weight:">(size, weight);
    }
    static NSFont monospaced(CGFloat size, CGFloat weight) {
        return sendToClass<NSFont, "monospacedSystemFontOfSize:weight:">(size, weight);
    }
    CGFloat pointSize() const { return send<CGFloat, "pointSize">(); }
    /// From a line's baseline to its top.
    CGFloat ascender() const { return send<CGFloat, "ascender">(); }
    CGFloat capHeight() const { return send<CGFloat, "capHeight">(); }
};

}  // namespace velmo::macos
