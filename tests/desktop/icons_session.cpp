#include "icons_session.h"

#include <algorithm>
#include <cmath>

namespace velmo::desktop {

namespace {

constexpr const char* ownPrefix = "Velmo.";
/// Points between the right end of the bar and its first item.
constexpr int marginAtTheRight = 6;
/// Pixels left of which windows are as far away as can be, wherever they belong.
constexpr int outOfReach = -31000;

}  // namespace

void IconsSession::TearDown() {
    // What a test that has failed may have left held.
    if (x().buttonState() != 0)
        release();
    icons_.clear();
    PanelWindowSession::TearDown();
}

xcb_window_t IconsSession::dockIcon(const std::string& name) {
    Icon made;
    made.program = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    auto* const raw = made.program->x().raw();
    made.window = xcb_generate_id(raw);
    const std::uint32_t color = iconColor;
    // The server draws it, however large it becomes.
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, made.window, x().root(), 0, 0, TrayClient::side,
                      TrayClient::side, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL, &color);
    const std::string wmClass = name + std::string("\0Icon\0", 6);
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, made.window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
    made.program->dock(made.window);
    const auto window = made.window;
    icons_.insert_or_assign(name, std::move(made));
    EXPECT_TRUE(
        eventually([&] { return x().parent(x().parent(window)) == bar() && x().isViewable(window); }));
    return window;
}

void IconsSession::dockIcons(const Names& names) {
    for (const auto& name : names)
        dockIcon(name);
}

xcb_window_t IconsSession::icon(const std::string& name) const {
    const auto found = icons_.find(name);
    return found == icons_.end() ? xcb_window_t{XCB_WINDOW_NONE} : found->second.window;
}

void IconsSession::hideIcon(const std::string& name) {
    take(name);
    const auto place = *x().area(bar());
    const auto start = areaOf(name);
    const int steps = 3;
    for (int step = 1; step <= steps; ++step)
        moveTo(start.midX() + (place.x + place.width / 4 - start.midX()) * step / steps, start.midY());
    release();
    ASSERT_TRUE(eventually([&] { return isUnseen(name); }));
}

bool IconsSession::isUnseen(const std::string& name) const {
    const auto area = areaOf(name);
    return area.x + area.width <= std::min(x().area(bar())->x, 0);
}

std::string IconsSession::nameOf(xcb_window_t item) const {
    const auto title = x().property(item, "WM_NAME");
    if (title.starts_with(ownPrefix))
        return title.substr(std::string(ownPrefix).size());
    for (const auto& [name, icon] : icons_) {
        if (x().parent(icon.window) == item)
            return name;
    }
    return x().property(item, "_NET_WM_NAME");
}

std::vector<IconsSession::Placed> IconsSession::items() const {
    std::vector<Placed> placed;
    for (const auto window : x().children(bar())) {
        const auto area = x().area(window);
        if (area && x().isViewable(window))
            placed.push_back({nameOf(window), *area});
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const auto& one, const auto& other) { return one.area.x > other.area.x; });
    return placed;
}

IconsSession::Names IconsSession::names() const {
    Names found;
    for (const auto& item : items())
        found.push_back(item.name);
    return found;
}

Area IconsSession::areaOf(const std::string& name) const {
    for (const auto& item : items()) {
        if (item.name == name)
            return item.area;
    }
    ADD_FAILURE() << name << " is not in the bar";
    return {};
}

bool IconsSession::areLaidOut(const Area& monitor, double scale) const {
    const auto pixels = [&](int points) { return static_cast<int>(std::lround(points * scale)); };
    if (x().area(bar()) != Area{monitor.x, monitor.y, monitor.width, pixels(barThickness)})
        return false;
    int edge = monitor.x + monitor.width - pixels(marginAtTheRight);
    for (const auto& [name, area] : items()) {
        if (area.x < outOfReach)
            continue;
        if (name == "Divider" && dividerIsExpanded()) {
            edge = area.x;
            continue;
        }
        if (area.x + area.width != edge || area.y != monitor.y || area.height != pixels(barThickness))
            return false;
        edge = area.x;
    }
    return true;
}

bool IconsSession::menuIsOpen() const {
    const auto windows = x().children(x().root());
    return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
        constexpr int leastHeight = 60;
        const auto area = x().area(window);
        return area && area->height > leastHeight && x().isViewable(window) &&
               x().property(window, "WM_CLASS").starts_with("velmo");
    });
}

void IconsSession::take(const std::string& name) const {
    const auto area = areaOf(name);
    xdotool({"mousemove", std::to_string(area.midX()), std::to_string(area.midY()), "keydown", "Super_L",
             "mousedown", "1"});
}

void IconsSession::drag(const std::string& name, int by) const {
    const auto start = areaOf(name);
    take(name);
    const int steps = 4;
    for (int step = 1; step <= steps; ++step)
        moveTo(start.midX() + by * step / steps, start.midY());
    ASSERT_TRUE(eventually([&] { return areaOf(name).x == start.x + by; })) << name << " follows the pointer";
}

void IconsSession::moveTo(int pixelX, int pixelY) const {
    movePointer(pixelX, pixelY);
}

void IconsSession::release() const {
    xdotool({"mouseup", "1", "keyup", "Super_L"});
}

}  // namespace velmo::desktop
