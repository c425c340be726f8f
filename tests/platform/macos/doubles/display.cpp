#include "platform/macos/doubles/display.h"

#include "macos/appkit/ns_application.h"
#include "macos/appkit/ns_bezier_path.h"
#include "macos/appkit/ns_button.h"
#include "macos/appkit/ns_image_view.h"
#include "macos/appkit/ns_panel.h"
#include "macos/appkit/ns_toolbar.h"
#include "macos/appkit/ns_view_controller.h"
#include "macos/appkit/ns_window_controller.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/popovers.h"
#include "platform/macos/doubles/record_class.h"

#include <cmath>
#include <string>
#include <vector>

namespace velmo::macos::doubles {
namespace {

// Views.

/// GNUstep has other numbers for above and below.
void addPlacedSubview(const NSView& view, const NSView& added, NSInteger place, const NSView& neighbour) {
    callOwn<&addPlacedSubview>(view, added, place < 0 ? 1U : 0U, neighbour);
}
void setWantsLayer(const NSView& /*view*/, bool wants) {
    if (wants)
        system().layer = makeRecord("VelmoLayerDouble");
}
CALayer layer(const NSView& /*view*/) {
    return Object::share<CALayer>(system().layer.get());
}
void setCornerRadius(const NSObject& layer, CGFloat radius) {
    setMember(layer, "cornerRadius", radius);
}
void setMasksToBounds(const NSObject& layer, bool masks) {
    setMember(layer, "masksToBounds", masks ? 1 : 0);
}
CGRect sameRect(const NSView& /*view*/, const CGRect& rect) {
    return rect;
}
CGSize controlSize(const NSControl& control) {
    return control.cell().cellSizeForBounds({{0, 0}, {1e5, 1e5}});
}
/// GNUstep's text cells do not tell how high they are where they are narrow.
CGSize textCellSize(const NSCell& cell, const CGRect& bounds) {
    const auto size = callOwn<&textCellSize, CGSize>(cell, CGRect{{0, 0}, {1e5, 1e5}});
    const bool wraps = Message<"NSCell", false, "lineBreakMode", NSUInteger>::send(cell.get()) == 0;
    if (size.width <= bounds.size.width || !wraps)
        return size;
    // About as many lines as words fill.
    const double lines = std::ceil(1.1 * size.width / bounds.size.width);
    return {bounds.size.width, lines * size.height};
}
/// GNUstep's themes have no look for switches.
void drawSwitch(const NSSwitch& control, const CGRect& /*dirty*/) {
    const auto round = [](const NSColor& color, const CGRect& area) {
        const NSBezierPath path = NSBezierPath::create();
        path.appendRoundedRect(area, area.size.height / 2, area.size.height / 2);
        color.setFill();
        path.fill();
    };
    const CGSize size = control.bounds().size;
    const bool isOn = control.state() != 0;
    round(isOn ? NSColor::controlAccent() : NSColor::black().withAlpha(0.3), {{0, 0}, size});
    round(NSColor::white(),
          {{isOn ? size.width - size.height + 1 : 1, 1}, {size.height - 2, size.height - 2}});
}
CGSize switchSize(const NSSwitch& /*control*/) {
    return {38, 20};
}
CGSize sliderSize(const NSControl& /*control*/) {
    return {-1, 20};
}
void setAccessibilityLabel(const NSObject& view, const NSString& text) {
    system().accessibilityLabels[view.get()] = text.text();
}
void setAccessibilityHelp(const NSObject& view, const NSString& text) {
    system().accessibilityHelps[view.get()] = text.text();
}
void setAccessibilityElement(const NSObject& view, bool isElement) {
    system().accessibilityElements[view.get()] = isElement;
}
void setAccessibilityRole(const NSObject& view, const NSString& role) {
    system().accessibilityRoles[view.get()] = role.text();
}
CGRect boxFrame(const NSView& /*view*/, const CGRect& rect) {
    const double margin = system().boxMargin;
    return {{rect.origin.x - margin, rect.origin.y - margin},
            {rect.size.width + 2 * margin, rect.size.height + 2 * margin}};
}
void setMaterial(const NSView& /*view*/, NSInteger material) {
    system().material = material;
}
void setBlendingMode(const NSView& /*view*/, NSInteger mode) {
    system().blendingMode = mode;
}
void setMaterialState(const NSView& /*view*/, NSInteger state) {
    system().materialState = state;
}
void setSize(const NSControl& /*control*/, NSControlSize /*size*/) {}
void setTint(const NSControl& /*control*/, const NSColor& /*color*/) {}
void setAlpha(const NSView& /*view*/, CGFloat /*alpha*/) {}
void addArea(const NSView& /*view*/, const Object& area) {
    system().trackingAreas.push_back(area);
}
void removeArea(const NSView& /*view*/, const Object& area) {
    std::erase_if(system().trackingAreas, [&](const Object& other) { return other == area; });
}
/// GNUstep's windows keep the style that they were made with.
void setStyleMask(const NSWindow& window, NSWindowStyleMask mask) {
    static const std::ptrdiff_t offset =
        ivar_getOffset(class_getInstanceVariable(classNamed<"NSWindow">(), "_styleMask"));
    *reinterpret_cast<unsigned*>(reinterpret_cast<char*>(window.get()) + offset) =
        static_cast<unsigned>(mask);
}

// GNUstep comes back to toolbars, their windows and menus that have gone, and makes toolbars of one name
// alike.

void keep(const Object& object) {
    static std::vector<Object> kept;
    kept.push_back(object);
}
void setToolbarStyle(const NSWindow& window, NSInteger style) {
    keep(window);
    system().toolbarStyle = style;
}
bool respondsToolbar(const NSToolbar& toolbar, Selector selector) {
    const auto responds = reinterpret_cast<RawBool (*)(Id, Selector, Selector)>(
        class_getMethodImplementation(classNamed<"NSObject">(), selectorNamed<"respondsToSelector:">()));
    return (system().hasDisplayModeCustomization ||
            selector != selectorNamed<"setAllowsDisplayModeCustomization:">()) &&
           responds(toolbar.get(), selectorNamed<"respondsToSelector:">(), selector) != 0;
}
void setDisplayModeCustomization(const NSToolbar& /*toolbar*/, bool allows) {
    system().allowsDisplayModeCustomization = allows;
}
Id makeToolbar(Id toolbar, Selector /*selector*/, Id identifier) {
    static int count = 0;
    const NSString name =
        NSString::from(Object::share<NSString>(identifier).text() + std::to_string(++count));
    const Id made = callOwnInitializer<&makeToolbar>(toolbar, name.get());
    keep(Object::share(made));
    return made;
}
bool& isMakingKey() {
    static bool isMaking = false;
    return isMaking;
}
void makeKeyAndOrderFront(const NSWindow& window, const Object& sender) {
    isMakingKey() = true;
    callOwn<&makeKeyAndOrderFront>(window, sender);
    isMakingKey() = false;
}
void orderFrontRegardless(const NSWindow& window) {
    if (!isMakingKey())
        system().windowsPutInFront.emplace_back(window.get(), window.isVisible());
    callOwn<&orderFrontRegardless>(window);
}
NSWindow makeWindowWithContent(const NSWindow& windowClass, const NSViewController& content) {
    NSWindow made = callOwn<&makeWindowWithContent, NSWindow>(windowClass, content);
    system().windowsWithContent.push_back(made.get());
    return made;
}
void showWindow(const NSWindowController& controller, const Object& sender) {
    const auto window = Message<"NSWindowController", false, "window", NSWindow>::send(controller.get());
    system().windowsShownByControllers.push_back(window.get());
    callOwn<&showWindow>(controller, sender);
}
void setShownMainMenu(const NSApplication& application, const NSMenu& menu) {
    keep(menu);
    callOwn<&setShownMainMenu>(application, menu);
}

void setToolTipsInBackground(const NSWindow& /*window*/, bool allows) {
    system().showsToolTipsInBackground = allows;
}
void setCollectionBehavior(const NSWindow& /*window*/, std::uint64_t behavior) {
    system().collectionBehavior = behavior;
}
void setAnimation(const NSWindow& /*window*/, NSInteger behavior) {
    system().animationBehavior = behavior;
}

// Colours.

/// GNUstep's named colours have no opacity.
NSColor label(const NSObject& /*colorClass*/) {
    return Message<"NSColor", true, "colorWithCalibratedWhite:alpha:", NSColor, CGFloat, CGFloat>::send(
        NSColor::classObject(), 0.0, 1.0);
}
NSColor accent(const NSObject& /*colorClass*/) {
    return Message<"NSColor", true, "colorWithCalibratedRed:green:blue:alpha:", NSColor, CGFloat, CGFloat,
                   CGFloat, CGFloat>::send(NSColor::classObject(), 0.0, 0.48, 1.0, 1.0);
}

// Pictures.

NSImage emptyImage(const CGSize& size) {
    return Message<"NSImage", false, "initWithSize:", NSImage, CGSize>::send(
        Message<"NSImage", true, "alloc", NSImage>::send(NSImage::classObject()).leave(), size);
}
NSImage painted(const CGSize& size, const std::function<void()>& paint) {
    NSImage image = emptyImage(size);
    Message<"NSImage", false, "lockFocus", void>::send(image.get());
    paint();
    Message<"NSImage", false, "unlockFocus", void>::send(image.get());
    return image;
}
NSImage configuredSymbol(const NSImage& image, const NSObject& configuration) {
    return shownSymbol(NSString::from(symbolOf(image)), numberMember(configuration, "pointSize"));
}

void setShownTemplate(const NSImage& /*image*/, bool /*isTemplate*/) {}
void setShownDescription(const NSImage& /*image*/, const NSString& /*text*/) {}

/// The test's function in place of the loop, if there is one.
void runApplication(const NSApplication& application) {
    if (!system().whileApplicationRuns) {
        callOwn<&runApplication>(application);
        return;
    }
    Message<"NSApplication", false, "finishLaunching", void>::send(application.get());
    const auto delegate = Message<"NSApplication", false, "delegate", Object>::send(application.get());
    Message<"NSApplicationDelegate", false, "applicationDidFinishLaunching:", void, Object>::send(
        delegate.get(), Object());
    system().whileApplicationRuns();
}
NSEvent shownCurrentEvent(const NSApplication& application) {
    if (system().currentEvent)
        return Object::share<NSEvent>(system().currentEvent.get());
    return callOwn<&shownCurrentEvent, NSEvent>(application);
}
bool setPolicy(const NSApplication& /*application*/, NSInteger policy) {
    system().activationPolicy = policy;
    return true;
}

void addLayers() {
    const RawClass layer = makeRecordClass("VelmoLayerDouble");
    setMethod<"setCornerRadius:", &setCornerRadius>(layer);
    setMethod<"setMasksToBounds:", &setMasksToBounds>(layer);
    objc_registerClassPair(layer);
    const RawClass effects = classNamed<"NSVisualEffectView">();
    setMethod<"setMaterial:", &setMaterial>(effects);
    setMethod<"setBlendingMode:", &setBlendingMode>(effects);
    setMethod<"setState:", &setMaterialState>(effects);
}

void addViews() {
    const RawClass view = classNamed<"NSView">();
    overrideMethod<"addSubview:positioned:relativeTo:", &addPlacedSubview>(view);
    setMethod<"setWantsLayer:", &setWantsLayer>(view);
    setMethod<"layer", &layer>(view);
    setMethod<"frameForAlignmentRect:", &sameRect>(view);
    setMethod<"alignmentRectForFrame:", &sameRect>(view);
    setMethod<"frameForAlignmentRect:", &boxFrame>(classNamed<"NSBox">());
    setMethod<"setAccessibilityLabel:", &setAccessibilityLabel>(view);
    setMethod<"setAccessibilityHelp:", &setAccessibilityHelp>(view);
    setMethod<"setAccessibilityElement:", &setAccessibilityElement>(view);
    setMethod<"setAccessibilityRole:", &setAccessibilityRole>(view);
    setMethod<"setAlphaValue:", &setAlpha>(view);
    setMethod<"addTrackingArea:", &addArea>(view);
    setMethod<"removeTrackingArea:", &removeArea>(view);
    setMethod<"intrinsicContentSize", &controlSize>(classNamed<"NSControl">());
    setMethod<"setControlSize:", &setSize>(classNamed<"NSControl">());
    setMethod<"setAccessibilityElement:", &setAccessibilityElement>(classNamed<"NSCell">());
    overrideMethod<"cellSizeForBounds:", &textCellSize>(classNamed<"NSTextFieldCell">());
    setMethod<"drawRect:", &drawSwitch>(classNamed<"NSSwitch">());
    addPopovers();
    setMethod<"intrinsicContentSize", &switchSize>(classNamed<"NSSwitch">());
    setMethod<"intrinsicContentSize", &sliderSize>(classNamed<"NSSlider">());
    setMethod<"setContentTintColor:", &setTint>(classNamed<"NSButton">());
    setMethod<"setContentTintColor:", &setTint>(classNamed<"NSImageView">());
    const RawClass window = classNamed<"NSWindow">();
    setMethod<"setStyleMask:", &setStyleMask>(window);
    overrideMethod<"orderFrontRegardless", &orderFrontRegardless>(window);
    overrideMethod<"makeKeyAndOrderFront:", &makeKeyAndOrderFront>(window);
    overrideMethod<"windowWithContentViewController:", &makeWindowWithContent>(metaclassOf(window));
    overrideMethod<"showWindow:", &showWindow>(classNamed<"NSWindowController">());
    setMethod<"setAllowsToolTipsWhenApplicationIsInactive:", &setToolTipsInBackground>(window);
    setMethod<"setCollectionBehavior:", &setCollectionBehavior>(window);
    setMethod<"setToolbarStyle:", &setToolbarStyle>(window);
    setMethod<"setAnimationBehavior:", &setAnimation>(window);
    setMethod<"setAccessibilityLabel:", &setAccessibilityLabel>(window);
    setMethod<"controlAccentColor", &accent>(metaclassOf(classNamed<"NSColor">()));
    setMethod<"labelColor", &label>(metaclassOf(classNamed<"NSColor">()));
    setMethod<"imageWithSymbolConfiguration:", &configuredSymbol>(classNamed<"NSImage">());
    setMethod<"setTemplate:", &setShownTemplate>(classNamed<"NSImage">());
    setMethod<"setAccessibilityDescription:", &setShownDescription>(classNamed<"NSImage">());
}

}  // namespace

void addDisplay() {
    addLayers();
    addViews();
    const RawClass application = classNamed<"NSApplication">();
    overrideMethod<"run", &runApplication>(application);
    overrideMethod<"currentEvent", &shownCurrentEvent>(application);
    setMethod<"setActivationPolicy:", &setPolicy>(application);
    overrideMethod<"setMainMenu:", &setShownMainMenu>(application);
    const RawClass toolbar = classNamed<"NSToolbar">();
    setMethod<"respondsToSelector:", &respondsToolbar>(toolbar);
    setMethod<"setAllowsDisplayModeCustomization:", &setDisplayModeCustomization>(toolbar);
    overrideInitializer<"initWithIdentifier:", &makeToolbar>(toolbar);
}

NSWindow makeWindow(const CGRect& content, NSWindowStyleMask mask) {
    const Id allocated = Message<"NSWindow", true, "alloc", NSWindow>::send(NSWindow::classObject()).leave();
    auto made =
        Message<"NSWindow", false, "initWithContentRect:styleMask:backing:defer:", NSWindow, CGRect,
                NSWindowStyleMask, NSBackingStoreType, bool>::send(allocated, content, mask,
                                                                   NSBackingStoreType::buffered, true);
    made.setReleasedWhenClosed(false);
    return made;
}

Object makeShownButton() {
    constexpr double width = 30;
    const double right = 1240 - 40 * static_cast<double>(system().barWindows.size());
    const NSWindow window = makeWindow({{right - width, 776}, {width, 22}}, NSWindowStyleMask{});
    NSButton button = NSButton::create();
    window.setContentView(button);
    window.orderFrontRegardless();
    system().barWindows.push_back(window);
    return button;
}

NSImage shownSymbol(const NSString& name, CGFloat pointSize) {
    NSImage image = painted({pointSize + 3, pointSize + 3}, [&] {
        const NSBezierPath path = NSBezierPath::create();
        path.setWindingRule(NSWindingRule::evenOdd);
        path.appendOval({{1, 1}, {pointSize + 1, pointSize + 1}});
        path.appendOval({{2.5, 2.5}, {pointSize - 2, pointSize - 2}});
        NSColor::label().setFill();
        path.fill();
    });
    system().symbols[image.get()] = name.text();
    return image;
}

NSImage shownDrawing(const CGSize& size, void* handler) {
    return painted(size, [&] { callBlock<RawBool>(handler, CGRect{{0, 0}, size}); });
}

NSImage shownBitmap(const CGSize& size) {
    return painted(size, [&] {
        const NSBezierPath path = NSBezierPath::create();
        path.appendRoundedRect({{0, 0}, size}, 3, 3);
        NSColor::systemGreen().setFill();
        path.fill();
    });
}

NSFont shownFont(const std::string& kind, CGFloat size, CGFloat weight) {
    const Id fonts = NSFont::classObject();
    if (kind == "monospaced")
        return Message<"NSFont", true, "userFixedPitchFontOfSize:", NSFont, CGFloat>::send(fonts, size);
    if (weight >= NSFontWeightBold)
        return Message<"NSFont", true, "boldSystemFontOfSize:", NSFont, CGFloat>::send(fonts, size);
    return Message<"NSFont", true, "systemFontOfSize:", NSFont, CGFloat>::send(fonts, size);
}

}  // namespace velmo::macos::doubles
