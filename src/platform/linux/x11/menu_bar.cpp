#include "menu_bar.h"

#include "linux/x11/server_grab.h"
#include "linux/x11/status_item_window.h"

#include <xcb/composite.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <utility>

namespace velmo::x11 {

namespace {

/// Longer than any item that is looked at, in points.
constexpr double longItem = 500;
/// By how much items become narrower at a time, in points.
constexpr double narrowingStep = 2;
/// Pixels. The bar looks the same everywhere, but servers copy a background tile by tile, and narrow ones
/// slowly.
constexpr int tileWidth = 256;
/// That we wait for others to be served. Longer, and somebody else holds the server.
constexpr std::chrono::milliseconds longestStep(5);
/// Items whose places are remembered while they are away.
constexpr item_placement::Memory remembered = {500, 50};

/// Before the number of an item where others have the same name.
constexpr char numberMark = '#';
/// The highest that another program's window may bring along.
constexpr std::size_t highestNumber = 1000;

std::string numbered(const std::string& name, std::size_t number) {
    return number == 1 ? name : name + numberMark + std::to_string(number);
}

/// Which of those with the name the identity stands for, 0 where it is another's, or written as we do not
/// write it. The first one has no number.
std::size_t numberAmong(const std::string& name, const std::string& identity) {
    std::size_t number = 1;
    if (identity.size() > name.size() + 1)
        std::from_chars(identity.data() + name.size() + 1, identity.data() + identity.size(), number);
    return number > 0 && identity == numbered(name, number) ? number : 0;
}

xcb_window_t makeBarWindow(Connection& connection) {
    const xcb_window_t window = connection.newId();
    // Else what is pressed or scrolled on the bare bar is the desktop's: its menu, or another workspace.
    const std::uint32_t keptHere = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_STRUCTURE_NOTIFY, keptHere};
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_DONT_PROPAGATE, values);
    const auto& atoms = connection.atoms();
    connection.setText(window, atoms.netWmName, "Velmo menu bar", atoms.utf8String);
    connection.setText(window, XCB_ATOM_WM_CLASS, std::string("velmo\0Velmo\0", 12), XCB_ATOM_STRING);
    connection.setCardinals(window, atoms.netWmWindowType, {atoms.netWmWindowTypeDock}, XCB_ATOM_ATOM);
    // With a pixmap of its own, what is in the bar is there to be pictured, whatever covers it.
    xcb_composite_redirect_window(connection.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    return window;
}

}  // namespace

MenuBar::MenuBar(const Environment& environment, const std::vector<std::string>& order,
                 std::function<void(const std::vector<std::string>&)> saveOrder)
    : environment_(environment),
      painting_(environment.connection),
      order_(order),
      orderSaver_(environment.connection.loop(), std::move(saveOrder)),
      window_(makeBarWindow(environment.connection)),
      strip_(environment.connection),
      place_(environment.connection, window_, strip_.window(), [this] { left_.notify(); }),
      layout_(environment.connection.loop(), [this] { layOutIfNeeded(); }) {
    settingsChanges_ = environment_.settings.onChange([this] { settle(); });
    screenChanges_ = environment_.screens.onChange([this] { settle(); });
    settle();
    xcb_map_window(connection().raw(), window_);
    strip_.show();
}

MenuBar::~MenuBar() {
    xcb_destroy_window(connection().raw(), window_);
}

std::unique_ptr<StatusItem> MenuBar::makeStatusItem(double length) {
    return std::make_unique<StatusItemWindow>(*this, length);
}

bool MenuBar::isOn(const Screen& screen) const {
    return !place_.isAway() && screen.frame == screens().toScreen(screens().primary());
}

std::string MenuBar::nextItemName() {
    return "Item-" + std::to_string(unnamedItems_++);
}

std::string MenuBar::identityFor(const std::string& application, const std::string& former) const {
    const std::string name = item_placement::isOwnName(application) ? "other." + application : application;
    const auto isFormer = [&](const auto* item) { return item->identity() == former && !item->hasEnded(); };
    const auto formerNumber = numberAmong(name, former);
    if (formerNumber > 0 && formerNumber <= highestNumber &&
        std::none_of(items_.begin(), items_.end(), isFormer))
        return former;
    // So many items leave one of these numbers free.
    std::vector<char> isTaken(items_.size() + 2);
    for (const auto* item : items_) {
        const auto number = numberAmong(name, item->identity());
        if (number < isTaken.size() && !item->hasEnded())
            isTaken[number] = 1;
    }
    isTaken[0] = 1;
    const auto number = std::find(isTaken.begin(), isTaken.end(), 0) - isTaken.begin();
    return numbered(name, static_cast<std::size_t>(number));
}

void MenuBar::addItem(BarItem& item) {
    items_.push_back(&item);
    stackAtRest(item);
    setNeedsLayout();
}

/// The server looks for the window under the pointer from the top down, at each move: it is ours that is
/// clicked when many move.
void MenuBar::stackAtRest(const BarItem& item) const {
    if (item.isOurs())
        return;
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(connection().raw(), item.window(), XCB_CONFIG_WINDOW_STACK_MODE, &below);
}

void MenuBar::removeItem(BarItem& item) {
    if (taken_ == &item)
        letGo();
    std::erase(items_, &item);
    setNeedsLayout();
}

void MenuBar::setNeedsLayout() {
    needsLayout_ = true;
    layout_.request();
}

void MenuBar::layOutIfNeeded() {
    if (std::exchange(needsLayout_, false))
        layOut();
}

/// Puts the bar at the top of the primary screen, in the present appearance.
void MenuBar::settle() {
    const PixelRect screen = environment_.screens.primary();
    area_ = {screen.x, screen.y, screen.width, appearance().pixels(bar_metrics::thickness)};
    place_.setArea(area_, screen);
    makeTile();
    strip_.reserve(area_, screens().monitors());
    for (auto* item : items_)
        item->appearanceChanged();
    layOut();
}

void MenuBar::makeTile() {
    Canvas canvas(tileWidth, area_.height);
    drawBackground(canvas);
    tile_ = painting_.upload(canvas);
    painting_.setBackground(window_, tile_);
}

void MenuBar::drawBackground(Canvas& canvas) const {
    canvas.fill(appearance().barBackground());
    const double line = appearance().pixels(1);
    canvas.fillRect({0, area_.height - line, double(canvas.width()), line}, appearance().hairline());
}

void MenuBar::drawHighlight(Canvas& canvas, double width) const {
    // Whole pixels, and as many on either side.
    const int margin = std::max(canvas.width() - appearance().pixels(width), 0) / 2;
    const double inset = appearance().pixels(bar_metrics::highlightInset);
    const double radius = bar_metrics::highlightRadius * appearance().scale;
    canvas.fillRoundedRect(
        {{double(margin), inset, canvas.width() - 2.0 * margin, canvas.height() - 2 * inset}, radius, radius},
        appearance().text().withAlpha(0.14));
}

PixelRect MenuBar::onRoot(const PixelRect& place) const {
    return {area_.x + place.x, area_.y + place.y, place.width, place.height};
}

bool MenuBar::contains(const Point& pixel) const {
    return pixel.x >= area_.x && pixel.x < area_.x + area_.width && pixel.y >= area_.y &&
           pixel.y < area_.y + area_.height;
}

int MenuBar::rightEdge() const {
    return area_.width - appearance().pixels(bar_metrics::rightMargin);
}

bool MenuBar::isLong(int width) const {
    return width >= appearance().pixels(longItem);
}

bool MenuBar::isLong(const BarItem& item) const {
    return isLong(item.preferredWidth());
}

/// What is short while an item is held stays short until that is let go: else the items between which it is
/// to be dropped would be taken away.
int MenuBar::widthOf(const BarItem& item) const {
    const auto& place = item.place();
    const bool waits = taken_ && place && isLong(item) && !isLong(place->width);
    return waits ? place->width : item.preferredWidth();
}

/// As wide as the item is wanted and, where it yields to others, as narrow as it can be. While an item is
/// held what could yield stays as it is: else where that is held would decide how wide the others are, and so
/// where it is held.
ItemWidth MenuBar::wantedWidth(const BarItem& item, bool yields) const {
    const int preferred = widthOf(item);
    const int least = std::min(item.leastWidth(), preferred);
    if (taken_ && item.place() && least < preferred) {
        const int present = std::clamp(item.place()->width, least, preferred);
        return {present, present};
    }
    return {preferred, yields ? least : preferred};
}

/// Where there are too many, the toggle stays where the next click expects it, and what is always seen stays
/// as long as what is revealed can yield instead.
std::vector<int> MenuBar::widthsOf(const std::vector<BarItem*>& items) const {
    const auto leftOf = [&](auto isIt) {
        const auto found = std::find_if(items.begin(), items.end(),
                                        [&](const auto* item) { return isIt(item->identity()); });
        return found == items.end() ? items.begin() : found + 1;
    };
    const auto toggle = leftOf(item_placement::isToggle);
    const auto divider = leftOf(item_placement::isHiddenDivider);
    std::vector<ItemWidth> wanted;
    wanted.reserve(items.size());
    for (auto item = items.begin(); item != items.end(); ++item) {
        wanted.push_back(wantedWidth(**item, item >= toggle));
        wanted.back().yieldsFirst = item >= divider;
    }
    const auto& scaled = appearance();
    return fittingWidths(wanted, {rightEdge(), scaled.pixels(longItem), scaled.pixels(narrowingStep)});
}

/// Gives items that the order does not know a place in it, and ours that have come back their side of each
/// other.
void MenuBar::placeItems() {
    const auto revision = order_.revision();
    for (const auto* item : items_) {
        if (!item->isShown())
            continue;
        if (item->isOurs())
            item_placement::placeOwnItem(order_, item->identity());
        else
            item_placement::placeApplication(order_, item->identity());
    }
    if (order_.revision() == revision)
        return;
    std::vector<std::string> present;
    for (const auto* item : items_)
        present.push_back(item->identity());
    item_placement::forgetAbsent(order_, present, remembered);
    orderSaver_.saveSoon(order_.rightToLeft());
}

std::vector<BarItem*> MenuBar::shownItems() const {
    std::vector<std::pair<std::size_t, BarItem*>> ranked;
    for (auto* item : items_) {
        if (item->isShown())
            ranked.emplace_back(order_.rank(item->identity()), item);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<BarItem*> shown;
    shown.reserve(ranked.size());
    for (const auto& [rank, item] : ranked)
        shown.push_back(item);
    return shown;
}

void MenuBar::layOut() {
    placeItems();
    auto shown = shownItems();
    const BarItem* dragged = isDragging_ && taken_->isShown() ? taken_ : nullptr;
    if (dragged) {
        // The others make room where the dragged item would be dropped.
        std::erase(shown, taken_);
        shown.insert(shown.begin() + static_cast<std::ptrdiff_t>(dropIndex()), taken_);
    }
    const auto widths = widthsOf(shown);
    const auto lefts = layOutStatusItems(rightEdge(), {widths.begin(), widths.end()});
    std::vector<PixelRect> places;
    places.reserve(shown.size());
    for (std::size_t index = 0; index < shown.size(); ++index) {
        const int x = shown[index] == dragged ? draggedX_ : static_cast<int>(lefts[index]);
        places.push_back({x, 0, widths[index], area_.height});
    }
    showItems(shown, places);
    tellOfChange();
}

void MenuBar::showItems(const std::vector<BarItem*>& shown, const std::vector<PixelRect>& places) {
    const auto leaves = [](const auto* item) { return !item->isShown() && item->place(); };
    const auto stays = [](const auto* item, const auto& place) { return item->place() == place; };
    if (std::none_of(items_.begin(), items_.end(), leaves) &&
        std::equal(shown.begin(), shown.end(), places.begin(), stays)) {
        displayItems();
        return;
    }
    // What takes longer comes first, as everybody waits for the step itself.
    for (std::size_t index = 0; index < shown.size(); ++index) {
        if (shown[index]->isOurs() || !stays(shown[index], places[index]))
            shown[index]->willMove(places[index]);
    }
    moveInOneStep(shown, places);
    // Often the server has been waiting for our processor: the step comes before what we draw next.
    connection().sync(longestStep);
}

/// Nobody sees, or pictures, a bar in which some have moved and others have not.
void MenuBar::moveInOneStep(const std::vector<BarItem*>& shown, const std::vector<PixelRect>& places) {
    const ServerGrab grab(connection());
    for (std::size_t index = 0; index < shown.size(); ++index)
        shown[index]->setPlace(places[index]);
    for (auto* item : items_) {
        if (!item->isShown())
            item->setPlace(std::nullopt);
    }
    // What our own show goes with where others are, and nobody is to see the former picture in another size.
    displayItems();
}

void MenuBar::displayItems() const {
    for (auto* item : items_)
        item->displayIfNeeded();
}

PixelRect MenuBar::shownArea(const BarItem& item) const {
    const int width = item.place() ? item.place()->width : 0;
    if (item.isOurs() || !item.place())
        return {0, 0, width, area_.height};
    const int shown = item.preferredWidth();
    const int height = appearance().pixels(bar_metrics::contentHeight);
    return {(width - shown) / 2, (area_.height - height) / 2, shown, height};
}

BarItem* MenuBar::itemAt(int x) const {
    for (auto* item : items_) {
        const auto& place = item->place();
        if (place && x >= place->x && x < place->x + place->width)
            return item;
    }
    return nullptr;
}

std::vector<item_placement::PlacedItem> MenuBar::placedItems(const BarItem* without) const {
    std::vector<item_placement::PlacedItem> placed;
    for (const auto* item : shownItems()) {
        if (item != without && item->place())
            placed.push_back({item->identity(), item->place()->x, item->place()->width});
    }
    return placed;
}

void MenuBar::take(BarItem& item) {
    taken_ = &item;
    isDragging_ = false;
}

void MenuBar::dragTo(int x) {
    if (!std::exchange(isDragging_, true)) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection().raw(), taken_->window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
    }
    draggedX_ = x;
    if (const auto place = taken_->place())
        taken_->setPlace(PixelRect{x, place->y, place->width, place->height});
    setNeedsLayout();
}

void MenuBar::drop() {
    if (isDragging_) {
        item_placement::drop(order_, placedItems(taken_), taken_->identity(), dropIndex());
        orderSaver_.save(order_.rightToLeft());
    }
    letGo();
}

void MenuBar::putBack() {
    if (taken_)
        letGo();
}

void MenuBar::letGo() {
    if (std::exchange(isDragging_, false))
        stackAtRest(*taken_);
    taken_ = nullptr;
    setNeedsLayout();
    letGo_.notify();
}

std::size_t MenuBar::dropIndex() const {
    const int width = taken_->place() ? taken_->place()->width : widthOf(*taken_);
    return item_placement::dropIndex(placedItems(taken_), {taken_->identity(), draggedX_, width}, rightEdge(),
                                     appearance().pixels(longItem));
}

}  // namespace velmo::x11
