#include "platform/macos/doubles/menu_bar.h"

#include "macos/appkit/ns_font.h"
#include "macos/appkit/ns_image.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/display.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/record_class.h"

namespace velmo::macos {
extern "C" {
extern const double NSFontWeightRegular = 0;
extern const double NSFontWeightMedium = 0.23;
extern const double NSFontWeightSemibold = 0.3;
extern const double NSFontWeightBold = 0.4;
extern const Id NSFontTextStyleBody = NSString::from("body").leave();
extern const Id NSFontTextStyleHeadline = NSString::from("headline").leave();
extern const Id NSFontTextStyleCallout = NSString::from("callout").leave();
extern const Id NSFontTextStyleCaption1 = NSString::from("caption1").leave();
extern const Id NSFontTextStyleCaption2 = NSString::from("caption2").leave();
}

namespace doubles {
namespace {

NSObject symbolImage(const NSObject& /*imageClass*/, const NSString& name, const NSString& description) {
    if (name.text() == "unknown")
        return {};
    if (system().hasDisplay)
        return shownSymbol(name, 13);
    const Object image = makeRecord("VelmoSymbolDouble");
    setMember(image, "symbol", name);
    setMember(image, "description", description);
    return Object::share<NSObject>(image.get());
}
NSObject withConfiguration(const NSObject& image, const NSObject& configuration) {
    const Object configured = makeRecord("VelmoSymbolDouble");
    setMember(configured, "symbol", member(image, "symbol"));
    setMember(configured, "description", member(image, "description"));
    setMember(configured, "pointSize", numberMember(configuration, "pointSize"));
    setMember(configured, "weight", numberMember(configuration, "weight"));
    return Object::share<NSObject>(configured.get());
}
NSObject symbolConfiguration(const NSObject& /*configurationClass*/, CGFloat pointSize, CGFloat weight) {
    const Object configuration = makeRecord("NSImageSymbolConfiguration");
    setMember(configuration, "pointSize", pointSize);
    setMember(configuration, "weight", weight);
    return Object::share<NSObject>(configuration.get());
}
NSObject drawnImage(const NSObject& /*imageClass*/, const CGSize& size, bool flipped, void* handler) {
    system().drawingHandlers.emplace_back(_Block_copy(handler), &_Block_release);
    if (system().hasDisplay)
        return shownDrawing(size, handler);
    const Object image = makeRecord("VelmoSymbolDouble");
    setMember(image, "width", size.width);
    setMember(image, "height", size.height);
    setMember(image, "isFlipped", flipped ? 1 : 0);
    return Object::share<NSObject>(image.get());
}
NSObject initWithImage(const NSObject& image, Id bitmap, const CGSize& size) {
    if (system().hasDisplay) {
        Object::adopt(image.get());
        Object shown = shownBitmap(size);
        Object(shown).leave();
        return Object::share<NSObject>(shown.get());
    }
    const Object made = makeRecord("VelmoSymbolDouble");
    setMember(made, "colour", numberMember(Object::share(bitmap), "colour"));
    setMember(made, "width", size.width);
    setMember(made, "height", size.height);
    // An initializer takes the reference to what was allocated, and gives one to what it returns.
    Object::adopt(image.get());
    Object(made).leave();
    return Object::share<NSObject>(made.get());
}
void setTemplate(const NSObject& image, bool isTemplate) {
    setMember(image, "isTemplate", isTemplate ? 1 : 0);
}
void setDescription(const NSObject& image, const NSString& text) {
    setMember(image, "description", text);
}

NSObject fontRecord(const char* kind, CGFloat size, CGFloat weight) {
    if (system().hasDisplay)
        return shownFont(kind, size, weight);
    const Object font = makeRecord("VelmoFontDouble");
    setMember(font, "kind", NSString::from(kind));
    setMember(font, "size", size);
    setMember(font, "weight", weight);
    return Object::share<NSObject>(font.get());
}
NSObject preferredFont(const NSObject& /*fontClass*/, const NSString& style, const Object& /*options*/) {
    const bool isHeadline = style.text() == "headline";
    const bool isCaption = style.text().starts_with("caption");
    const CGFloat weight = isHeadline && system().hasDisplay ? NSFontWeightBold : 0;
    return fontRecord(style.text().c_str(), isCaption ? 10 : 13, weight);
}
NSObject systemFont(const NSObject& /*fontClass*/, CGFloat size, CGFloat weight) {
    return fontRecord("system", size, weight);
}
NSObject digitFont(const NSObject& /*fontClass*/, CGFloat size, CGFloat weight) {
    return fontRecord("digits", size, weight);
}
NSObject monospacedFont(const NSObject& /*fontClass*/, CGFloat size, CGFloat weight) {
    return fontRecord("monospaced", size, weight);
}
CGFloat systemFontSize(const NSObject& /*fontClass*/) {
    return system().systemFontSize;
}
CGFloat fontSize(const NSObject& font) {
    return numberMember(font, "size");
}

}  // namespace

std::string symbolOf(const Object& image) {
    if (system().hasDisplay) {
        const auto shown = system().symbols.find(image.get());
        return shown == system().symbols.end() ? "" : shown->second;
    }
    return as<NSString>(member(image, "symbol")).text();
}

void addPictures() {
    const RawClass symbol = makeRecordClass("VelmoSymbolDouble");
    setMethod<"imageWithSymbolConfiguration:", &withConfiguration>(symbol);
    setMethod<"setTemplate:", &setTemplate>(symbol);
    setMethod<"setAccessibilityDescription:", &setDescription>(symbol);
    objc_registerClassPair(symbol);
    const RawClass configuration = makeRecordClass("NSImageSymbolConfiguration");
    setMethod<"configurationWithPointSize:weight:", &symbolConfiguration>(metaclassOf(configuration));
    objc_registerClassPair(configuration);
    const RawClass image = metaclassOf(classNamed<"NSImage">());
    setMethod<"imageWithSystemSymbolName:accessibilityDescription:", &symbolImage>(image);
    setMethod<"imageWithSize:flipped:drawingHandler:", &drawnImage>(image);
    setMethod<"initWithCGImage:size:", &initWithImage>(classNamed<"NSImage">());
    const RawClass font = makeRecordClass("VelmoFontDouble");
    setMethod<"pointSize", &fontSize>(font);
    objc_registerClassPair(font);
    const RawClass fonts = metaclassOf(classNamed<"NSFont">());
    setMethod<"preferredFontForTextStyle:options:", &preferredFont>(fonts);
    setMethod<"systemFontSize", &systemFontSize>(fonts);
    setMethod<"systemFontOfSize:weight:", &systemFont>(fonts);
    setMethod<"monospacedDigitSystemFontOfSize:weight:", &digitFont>(fonts);
    setMethod<"monospacedSystemFontOfSize:weight:", &monospacedFont>(fonts);
}

}  // namespace doubles
}  // namespace velmo::macos
