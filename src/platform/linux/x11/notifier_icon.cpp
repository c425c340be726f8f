#include "notifier_icon.h"

#include "linux/status_notifier/tool_tip_text.h"
#include "linux/x11/tray_slot.h"

#include <cmath>
#include <utility>

namespace velmo::x11 {

namespace {

using status_notifier::ItemStatus;
using status_notifier::MenuClient;

/// Of a wheel's notch, as programs expect it.
constexpr int scrollOfNotch = 120;
constexpr xcb_button_t wheelUp = 4;
constexpr xcb_button_t wheelLeft = 6;
constexpr xcb_button_t lastWheelButton = 7;
/// Points.
constexpr double menuIconSide = 16;
/// Between the bar and a menu.
constexpr double menuGap = 4;
/// What stands for an icon that cannot be had.
constexpr double missingIconSize = 13;

}  // namespace

NotifierIcon::NotifierIcon(MenuBar& bar, status_notifier::Item& item)
    : BarItem(bar.connection(), bar.window()),
      bar_(bar),
      spacing_(bar.itemSpacing()),
      item_(item),
      painting_(connection_.loop(), [this] { paint(); }),
      toolTip_(
          bar, *this, [this] { return toolTip(); }, &LazyToolkit::showRichToolTip) {
    listenToMouse();
    setIdentity(bar.identityFor(item.application()));
    follow();
    bar_.addItem(*this);
}

NotifierIcon::~NotifierIcon() {
    if (menu_)
        menu_->end();
    bar_.removeItem(*this);
}

void NotifierIcon::follow() {
    change();
    toolTip_.update();
    const auto& title = item_.properties().title;
    if (title != title_) {
        title_ = title;
        connection_.setText(window(), XCB_ATOM_WM_NAME, title, connection_.atoms().utf8String);
        connection_.setText(window(), connection_.atoms().netWmName, title, connection_.atoms().utf8String);
    }
    bar_.tellOfChange();
    if (isShown() == isShown_)
        return;
    isShown_ = isShown();
    bar_.setNeedsLayout();
}

bool NotifierIcon::isShown() const {
    return item_.properties().status != ItemStatus::passive;
}

int NotifierIcon::preferredWidth() const {
    return traySlotWidth(bar_.appearance(), spacing_);
}

int NotifierIcon::leastWidth() const {
    return leastTraySlotWidth(bar_.appearance(), spacing_);
}

PixelRect NotifierIcon::iconArea(const PixelRect& place) const {
    const int width = preferredWidth();
    return {(place.width - width) / 2, 0, width, place.height};
}

std::optional<BarItem::Content> NotifierIcon::content() const {
    auto content = BarItem::content();
    if (!content)
        return std::nullopt;
    updateIcon(place()->height);
    content->pixmap = icon_.id();
    content->area = iconArea(*place());
    return content;
}

bool NotifierIcon::click(xcb_button_t button, xcb_timestamp_t time) {
    lastTime_ = time;
    const PixelRect area = bar_.onRoot(*place());
    clicked(button, area.x + area.width / 2, area.y + area.height / 2);
    return true;
}

WindowListEntry NotifierIcon::describe() const {
    WindowListEntry entry;
    entry.number = window();
    entry.ownerPID = item_.processIdentifier();
    entry.ownerName = item_.ownerName();
    const auto& title = item_.properties().title;
    entry.name = title.empty() ? std::nullopt : std::optional(title);
    return entry;
}

void NotifierIcon::pressed(const xcb_button_press_event_t& event) {
    toolTip_.end();
    lastTime_ = event.time;
    if (event.detail >= wheelUp && event.detail <= lastWheelButton) {
        // The buttons of an axis follow each other: up and down, left and right.
        const bool isPositive = event.detail % 2 == 0;
        item_.scroll(isPositive ? scrollOfNotch : -scrollOfNotch, event.detail >= wheelLeft);
        return;
    }
    // A second button during a press belongs to the first one's click.
    if (pressedButton_ != 0 || event.detail > XCB_BUTTON_INDEX_3)
        return;
    pressedButton_ = event.detail;
    painting_.request();
}

void NotifierIcon::released(const xcb_button_release_event_t& event) {
    if (event.detail != pressedButton_)
        return;
    pressedButton_ = 0;
    painting_.request();
    lastTime_ = event.time;
    if (contains(event.event_x, event.event_y))
        clicked(event.detail, event.root_x, event.root_y);
}

void NotifierIcon::clicked(xcb_button_t button, int x, int y) {
    provideActivationToken();
    if (button == XCB_BUTTON_INDEX_2)
        item_.secondaryActivate(x, y);
    else if (button == XCB_BUTTON_INDEX_3 || item_.properties().itemIsMenu)
        openMenu(x, y);
    else
        item_.activate(x, y, lifetime_.guard([this, x, y] { openMenu(x, y); }));
}

/// Window managers read the time of the click from it, and so let the program's window come to the front.
void NotifierIcon::provideActivationToken() {
    item_.provideActivationToken("velmo-" + std::to_string(bar_.processIdentifier()) + "-" +
                                 std::to_string(window()) + "-" + std::to_string(++tokens_) + "_TIME" +
                                 std::to_string(lastTime_));
}

void NotifierIcon::openMenu(int x, int y) {
    if (item_.properties().menuPath.empty()) {
        item_.contextMenu(x, y);
        return;
    }
    if (menuIsOpen_)
        return;
    const auto& appearance = bar_.appearance();
    // In the place of one that was asked for and has not come.
    menu_ =
        std::make_shared<MenuClient>(item_, appearance.pixels(menuIconSide), appearance.iconTheme, lastTime_);
    menu_->prepare([this, x, y](auto outcome) { menuCame(outcome, x, y); });
}

void NotifierIcon::menuCame(MenuClient::Outcome outcome, int x, int y) {
    // Hidden meanwhile, it has no place for a menu.
    if (outcome == MenuClient::Outcome::ready && place() && !isOffScreen() && !bar_.toolkit().isMenuOpen() &&
        !bar_.toolkit().isExportedMenuOpen()) {
        showMenu();
        return;
    }
    menu_ = nullptr;
    if (outcome == MenuClient::Outcome::refused)
        item_.contextMenu(x, y);
}

void NotifierIcon::showMenu() {
    // The item may end while the menu is open.
    const auto menu = menu_;
    const PixelRect area = bar_.onRoot(*place());
    toolTip_.end();
    auto setOpen = lifetime_.guard([this](bool isOpen) {
        menuIsOpen_ = isOpen;
        painting_.request();
        if (!isOpen)
            menu_ = nullptr;
    });
    setOpen(true);
    bar_.toolkit().popUp(*menu, item_.processIdentifier(), area.x,
                         area.y + area.height + bar_.appearance().pixels(menuGap));
    setOpen(false);
}

void NotifierIcon::change() {
    iconIsKnown_ = false;
    unpainted_ = true;
    painting_.request();
}

bool NotifierIcon::isOffScreen() const {
    return !place() || place()->x + place()->width <= 0;
}

void NotifierIcon::willMove(const PixelRect& next) {
    if (next.x + next.width <= 0)
        return;
    const auto& present = place();
    if (!unpainted_ && present && next.width == present->width && next.height == present->height)
        return;
    nextLook_ = look(next);
    unpainted_ = false;
}

/// It is painted before it can be seen as it was.
void NotifierIcon::moved() {
    if (nextLook_) {
        unpainted_ = false;
        bar_.painting().setBackground(window(), *std::exchange(nextLook_, std::nullopt));
    } else if (unpainted_) {
        painting_.request();
    }
}

void NotifierIcon::paint() {
    // Off the screen nobody looks.
    unpainted_ = isOffScreen();
    if (!unpainted_)
        bar_.painting().setBackground(window(), look(*place()));
    else if (!place())
        // The release of a press goes nowhere once the window is hidden.
        pressedButton_ = 0;
}

Pixmap NotifierIcon::look(const PixelRect& place) const {
    updateIcon(place.height);
    const bool isHighlighted = pressedButton_ != 0 || menuIsOpen_;
    const Pixmap highlighted = isHighlighted ? highlight(place) : Pixmap();
    const auto& painting = bar_.painting();
    return painting.overlay(isHighlighted ? highlighted : bar_.backgroundTile(), place.width, place.height,
                            {icon_.id(), painting.alphaFormat(), iconArea(place)});
}

void NotifierIcon::updateIcon(int height) const {
    if (iconIsKnown_)
        return;
    iconIsKnown_ = true;
    Canvas canvas(preferredWidth(), height);
    drawIcon(canvas);
    icon_ = bar_.painting().uploadAlpha(canvas);
}

/// The bar as it looks behind an item that is in use.
Pixmap NotifierIcon::highlight(const PixelRect& place) const {
    Canvas canvas(place.width, place.height);
    bar_.drawBackground(canvas);
    bar_.drawHighlight(canvas, spacing_.iconHighlightWidth());
    return bar_.painting().upload(canvas);
}

void NotifierIcon::drawIcon(Canvas& canvas) const {
    const auto& appearance = bar_.appearance();
    // Icons have been made for the scale: they are drawn pixel by pixel.
    Appearance exact = appearance;
    exact.scale = 1;
    if (const auto& icon = item_.icon()) {
        const Size size = imageSize(*icon);
        canvas.drawImage(*icon, std::floor((canvas.width() - size.width) / 2),
                         std::floor((canvas.height() - size.height) / 2), exact, appearance.text());
    } else {
        const Image missing = {Symbol{"circle", missingIconSize, FontWeight::regular}, true, {}};
        const double side = appearance.pixels(imageSize(missing).width);
        canvas.drawImage(missing, std::floor((canvas.width() - side) / 2),
                         std::floor((canvas.height() - side) / 2), appearance, appearance.text());
    }
    if (const auto& overlay = item_.overlay()) {
        const Size size = imageSize(*overlay);
        const PixelRect area = trayIconArea(appearance, canvas.width());
        canvas.drawImage(*overlay, area.x + area.width - size.width, area.y + area.height - size.height,
                         exact, appearance.text());
    }
}

std::string NotifierIcon::toolTip() const {
    const auto& properties = item_.properties();
    auto markup = status_notifier::toolTipMarkup(properties.toolTipTitle, properties.toolTipDescription);
    return markup.empty() ? status_notifier::toolTipMarkup(properties.title, {}) : markup;
}

}  // namespace velmo::x11
