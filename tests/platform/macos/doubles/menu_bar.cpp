#include "platform/macos/doubles/menu_bar.h"

#include "macos/appkit/ns_menu.h"
#include "macos/appkit/ns_status_bar.h"
#include "macos/foundation/main_thread.h"
#include "macos/foundation/ns_user_defaults.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/display.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/method_without_display.h"
#include "platform/macos/doubles/record_class.h"

#include <gtest/gtest.h>

namespace velmo::macos {
namespace doubles {
namespace {

// Status items. The window and the screen of a button are the button itself.

NSObject systemStatusBar(const NSObject& /*barClass*/) {
    return Object::share<NSObject>(makeRecord("VelmoStatusBarDouble").get());
}
CGFloat thickness(const NSObject& /*bar*/) {
    return 24;
}
NSObject statusItem(const NSObject& /*bar*/, CGFloat length) {
    const Object item = makeRecord("VelmoStatusItemDouble");
    setMember(item, "length", length);
    setMember(item, "isVisible", 1);
    if (system().givesButtons)
        setMember(item, "button", system().hasDisplay ? makeShownButton() : makeRecord("VelmoButtonDouble"));
    system().statusItems.push_back(item);
    return Object::share<NSObject>(item.get());
}
NSString positionKey(const Object& item) {
    return NSString::from("NSStatusItem Preferred Position " +
                          as<NSString>(member(item, "autosaveName")).text());
}
void takePosition(const NSObject& item) {
    setMember(item, "position", NSUserDefaults::standard().doubleForKey(positionKey(item)));
}
/// The system forgets the places of items that it does not show, not only at once.
void forgetPosition(const Object& item) {
    NSUserDefaults::standard().removeObject(positionKey(item));
}
void deallocItem(Id item, Selector /*selector*/) {
    // It cannot be retained any more.
    Object going = Object::adopt(item);
    forgetPosition(going);
    callOwn<&deallocItem>(going);
    going.leave();
}
void removeStatusItem(const NSObject& /*bar*/, const NSObject& item) {
    forgetPosition(item);
    std::erase_if(system().statusItems, [&](const Object& other) { return other == item; });
}
CGFloat itemLength(const NSObject& item) {
    return numberMember(item, "length");
}
void setItemLength(const NSObject& item, CGFloat length) {
    setMember(item, "length", length);
}
void setAutosaveName(const NSObject& item, const NSString& name) {
    setMember(item, "autosaveName", name);
    takePosition(item);
}
bool isItemVisible(const NSObject& item) {
    return numberMember(item, "isVisible") != 0;
}
void setItemVisible(const NSObject& item, bool visible) {
    setMember(item, "isVisible", visible ? 1 : 0);
    if (visible)
        takePosition(item);
    else
        runOnMainThread([item] {
            if (!isItemVisible(item))
                forgetPosition(item);
        });
}
NSObject itemButton(const NSObject& item) {
    return Object::share<NSObject>(member(item, "button").get());
}

void setImage(const NSObject& button, const Object& image) {
    setMember(button, "image", image ? image : Object(NSString::from("none")));
}
void setTitle(const NSObject& button, const NSString& title) {
    setMember(button, "title", title);
}
void setFont(const NSObject& button, const Object& font) {
    setMember(button, "font", font);
}
void setEnabled(const NSObject& button, bool enabled) {
    setMember(button, "isEnabled", enabled ? 1 : 0);
}
void setToolTip(const NSObject& button, const NSString& text) {
    setMember(button, "toolTip", text);
}
Object image(const NSObject& button) {
    return member(button, "image");
}
NSString title(const NSObject& button) {
    return as<NSString>(member(button, "title"));
}
bool isEnabled(const NSObject& button) {
    return !member(button, "isEnabled") || numberMember(button, "isEnabled") != 0;
}
NSString toolTip(const NSObject& button) {
    return as<NSString>(member(button, "toolTip"));
}
/// Not retained, as the system does not.
void setTarget(const NSObject& button, Id target) {
    setMember(button, "target", static_cast<double>(reinterpret_cast<std::uintptr_t>(target)));
}
void setAction(const NSObject& button, Selector action) {
    setMember(button, "action", static_cast<double>(reinterpret_cast<std::uintptr_t>(action)));
}
NSInteger sendActionOn(const NSObject& button, std::uint64_t mask) {
    setMember(button, "mask", static_cast<double>(mask));
    return 0;
}
CGRect bounds(const NSObject& /*button*/) {
    return {{0, 0}, {30, 22}};
}
bool isFlipped(const NSObject& /*button*/) {
    return system().buttonsAreFlipped;
}
NSObject buttonWindow(const NSObject& button) {
    return system().buttonsHaveWindows ? button : NSObject();
}
NSInteger windowNumber(const NSObject& /*window*/) {
    return 77;
}
CGRect convertToView(const NSObject& /*button*/, const CGRect& rect, const Object& view) {
    EXPECT_FALSE(view);
    return {{rect.origin.x + 1, rect.origin.y + 2}, rect.size};
}
CGRect convertToScreen(const NSObject& /*window*/, const CGRect& rect) {
    return {{rect.origin.x + 1000, rect.origin.y + 800}, rect.size};
}
NSObject windowScreen(const NSObject& /*window*/) {
    return NSScreen::main();
}
void addTrackingArea(const NSObject& /*button*/, const Object& area) {
    system().trackingAreas.push_back(area);
}
void removeTrackingArea(const NSObject& /*button*/, const Object& area) {
    std::erase_if(system().trackingAreas, [&](const Object& other) { return other == area; });
}
/// A real one needs a display. An initializer takes the reference to what was allocated, and gives one to
/// what it returns.
NSObject initMenu(const NSObject& menu) {
    Object::adopt(menu.get());
    const Object made = makeRecord("VelmoMenuDouble");
    setMember(made, "items", arrayOf({}));
    Object(made).leave();
    return Object::share<NSObject>(made.get());
}
void addItem(const NSObject& menu, const Object& item) {
    Message<"NSMutableArray", false, "addObject:", void, Object>::send(member(menu, "items").get(), item);
}

void setMenuTitle(const NSObject& menu, const NSString& title) {
    setMember(menu, "title", title);
}
void setSubmenu(const NSObject& /*menu*/, const Object& submenu, const NSMenuItem& /*item*/) {
    system().submenus.push_back(submenu);
}

NSArray itemsOf(const NSObject& menu) {
    return system().hasDisplay ? Message<"NSMenu", false, "itemArray", NSArray>::send(menu.get())
                               : as<NSArray>(member(menu, "items"));
}
bool popUpMenu(const NSObject& menu, const Object& positioned, const CGPoint& location,
               const NSObject& view) {
    EXPECT_FALSE(positioned);
    const auto items = itemsOf(menu).all<NSObject>();
    system().shownMenus.push_back(
        {.items = {items.begin(), items.end()}, .location = {location.x, location.y}, .view = view});
    if (system().whileMenuIsOpen)
        system().whileMenuIsOpen();
    return true;
}

void sendAction(const Object& button) {
    if (system().hasDisplay) {
        Message<"NSButton", false, "performClick:", void, Object>::send(button.get(), Object());
        return;
    }
    const auto target = reinterpret_cast<Id>(static_cast<std::uintptr_t>(numberMember(button, "target")));
    const auto action =
        reinterpret_cast<Selector>(static_cast<std::uintptr_t>(numberMember(button, "action")));
    if (target != nullptr)
        reinterpret_cast<void (*)(Id, Selector, Id)>(messageImplementation<void>(target, action))(
            target, action, button.get());
}

void addItems() {
    const RawClass bar = makeRecordClass("VelmoStatusBarDouble");
    setMethod<"statusItemWithLength:", &statusItem>(bar);
    setMethod<"removeStatusItem:", &removeStatusItem>(bar);
    setMethod<"thickness", &thickness>(bar);
    objc_registerClassPair(bar);
    setMethod<"systemStatusBar", &systemStatusBar>(metaclassOf(classNamed<"NSStatusBar">()));
    const RawClass item = makeRecordClass("VelmoStatusItemDouble");
    setMethod<"length", &itemLength>(item);
    setMethod<"setLength:", &setItemLength>(item);
    setMethod<"setAutosaveName:", &setAutosaveName>(item);
    setMethod<"isVisible", &isItemVisible>(item);
    setMethod<"setVisible:", &setItemVisible>(item);
    setMethod<"button", &itemButton>(item);
    objc_registerClassPair(item);
    keepOwnMethod<&deallocItem>(item, selectorNamed<"dealloc">());
    class_replaceMethod(item, selectorNamed<"dealloc">(), reinterpret_cast<Implementation>(&deallocItem),
                        "v@:");
}

void addButton() {
    const RawClass button = makeRecordClass("VelmoButtonDouble");
    setMethod<"setImage:", &setImage>(button);
    setMethod<"setTitle:", &setTitle>(button);
    setMethod<"setFont:", &setFont>(button);
    setMethod<"setEnabled:", &setEnabled>(button);
    setMethod<"setToolTip:", &setToolTip>(button);
    setMethod<"image", &image>(button);
    setMethod<"title", &title>(button);
    setMethod<"isEnabled", &isEnabled>(button);
    setMethod<"toolTip", &toolTip>(button);
    setMethod<"setTarget:", &setTarget>(button);
    setMethod<"setAction:", &setAction>(button);
    setMethod<"sendActionOn:", &sendActionOn>(button);
    setMethod<"bounds", &bounds>(button);
    setMethod<"isFlipped", &isFlipped>(button);
    setMethod<"window", &buttonWindow>(button);
    setMethod<"windowNumber", &windowNumber>(button);
    setMethod<"convertRect:toView:", &convertToView>(button);
    setMethod<"convertRectToScreen:", &convertToScreen>(button);
    setMethod<"screen", &windowScreen>(button);
    setMethod<"addTrackingArea:", &addTrackingArea>(button);
    setMethod<"removeTrackingArea:", &removeTrackingArea>(button);
    objc_registerClassPair(button);
}

void addMenus() {
    const RawClass menu = makeRecordClass("VelmoMenuDouble");
    setMethod<"addItem:", &addItem>(menu);
    setMethod<"setTitle:", &setMenuTitle>(menu);
    setMethod<"setSubmenu:forItem:", &setSubmenu>(menu);
    setMethod<"popUpMenuPositioningItem:atLocation:inView:", &popUpMenu>(menu);
    objc_registerClassPair(menu);
    setMethodWithoutDisplay<"init", &initMenu>(classNamed<"NSMenu">());
    setMethod<"popUpMenuPositioningItem:atLocation:inView:", &popUpMenu>(classNamed<"NSMenu">());
}

}  // namespace

void addMenuBar() {
    addItems();
    addButton();
    addMenus();
    addPictures();
    addEvents();
    addScreens();
}

Object itemNamed(const std::string& name) {
    for (const Object& item : system().statusItems) {
        if (as<NSString>(member(item, "autosaveName")).text() == name)
            return item;
    }
    return {};
}

void click(const Object& button, const Event& event) {
    system().currentEvent = makeEvent(event);
    sendAction(button);
    system().currentEvent = {};
}

void choose(const Object& menuItem) {
    const Id target = Message<"NSMenuItem", false, "target", Object>::send(menuItem.get()).get();
    const Selector action = Message<"NSMenuItem", false, "action", Selector>::send(menuItem.get());
    reinterpret_cast<void (*)(Id, Selector, Id)>(messageImplementation<void>(target, action))(target, action,
                                                                                              menuItem.get());
}

}  // namespace doubles
}  // namespace velmo::macos
