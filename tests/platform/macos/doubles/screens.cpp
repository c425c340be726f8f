#include "platform/macos/doubles/menu_bar.h"

#include "macos/appkit/ns_screen.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/method_without_display.h"
#include "platform/macos/doubles/record_class.h"

namespace velmo::macos {
namespace doubles {
namespace {

NSArray screens(const NSObject& /*screenClass*/) {
    return arrayOf(system().screens);
}
NSObject mainScreen(const NSObject& /*screenClass*/) {
    return system().screens.empty() ? NSObject() : Object::share<NSObject>(system().screens.back().get());
}
CGRect rectMember(const Object& record, const std::string& name) {
    return {
        {numberMember(record, (name + ".x").c_str()), numberMember(record, (name + ".y").c_str())},
        {numberMember(record, (name + ".width").c_str()), numberMember(record, (name + ".height").c_str())}};
}
CGRect screenFrame(const NSObject& screen) {
    return rectMember(screen, "frame");
}
CGRect screenVisibleFrame(const NSObject& screen) {
    return rectMember(screen, "visibleFrame");
}
CGFloat screenScale(const NSObject& screen) {
    return numberMember(screen, "scale");
}

/// Lists take those that are of their class.
bool isScreen(const NSObject& /*screen*/, RawClass other) {
    return other == classNamed<"NSScreen">();
}

}  // namespace

void addScreens() {
    const RawClass screen = makeRecordClass("VelmoScreenDouble");
    setMethod<"frame", &screenFrame>(screen);
    setMethod<"visibleFrame", &screenVisibleFrame>(screen);
    setMethod<"backingScaleFactor", &screenScale>(screen);
    setMethod<"isKindOfClass:", &isScreen>(screen);
    objc_registerClassPair(screen);
    setMethodWithoutDisplay<"screens", &screens>(metaclassOf(classNamed<"NSScreen">()));
    setMethodWithoutDisplay<"mainScreen", &mainScreen>(metaclassOf(classNamed<"NSScreen">()));
}

Object makeScreen(const Screen& screen) {
    const Object made = makeRecord("VelmoScreenDouble");
    const auto setRect = [&](const std::string& name, const Rect& rect) {
        setMember(made, (name + ".x").c_str(), rect.x);
        setMember(made, (name + ".y").c_str(), rect.y);
        setMember(made, (name + ".width").c_str(), rect.width);
        setMember(made, (name + ".height").c_str(), rect.height);
    };
    setRect("frame", screen.frame);
    setRect("visibleFrame", screen.visibleFrame);
    setMember(made, "scale", screen.backingScaleFactor);
    return made;
}

}  // namespace doubles
}  // namespace velmo::macos
