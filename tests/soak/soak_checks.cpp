// What the model says, and whether the bar is so.

#include "soak_session.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <tuple>

namespace velmo::desktop {

namespace {

constexpr milliseconds longestEffect(15000);
/// Pixels of a divider that hides, at any scale: none of its length is seen.
constexpr int hidingWidth = 1;

}  // namespace

xcb_window_t SoakSession::itemOf(const std::string& name) const {
    const auto found = clients_.find(name);
    if (found == clients_.end())
        return x().windowTitled(name).value_or(xcb_window_t{XCB_WINDOW_NONE});
    const auto& client = found->second;
    if (client.isOnBus())
        return itemTitled(name);
    const auto icon =
        client.trayProgram ? std::optional(client.icon) : x().windowOfClass(bar(), client.windowClass);
    return icon ? x().parent(*icon) : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::string> SoakSession::expectedOrder() const {
    auto order = order_;
    std::erase_if(order, [&](const auto& name) {
        if (name == "Velmo.AlwaysHiddenDivider")
            return !hasAlwaysHidden_;
        if (name == "Velmo.Clock")
            return !hasClock_;
        return !name.starts_with("Velmo.") && !clients_.contains(name);
    });
    return order;
}

std::vector<std::string> SoakSession::seenOrder() const {
    std::map<xcb_window_t, std::string> names;
    for (const auto& name : order_)
        names[itemOf(name)] = name;
    // Where the reach of coordinates ends lies more than one; those are taken to lie as they should.
    std::vector<std::tuple<int, std::ptrdiff_t, std::string>> placed;
    for (const auto window : x().children(bar())) {
        const auto area = x().area(window);
        if (!area || !x().isViewable(window))
            continue;
        const auto found = names.find(window);
        const auto name = found == names.end() ? "a stranger" : found->second;
        const auto place = std::find(order_.begin(), order_.end(), name) - order_.begin();
        placed.emplace_back(-area->x, area->x < 0 ? place : 0, name);
    }
    std::sort(placed.begin(), placed.end());
    std::vector<std::string> order;
    for (const auto& item : placed)
        order.push_back(std::get<std::string>(item));
    return order;
}

SoakSession::Level SoakSession::seenLevel() const {
    const auto hides = [&](xcb_window_t window) {
        const auto place = x().area(window);
        return place && place->width == hidingWidth;
    };
    if (hides(divider()))
        return Level::none;
    // Where there is none, nothing tells the levels from each other.
    if (!hasAlwaysHidden_)
        return level_ == Level::none ? Level::hidden : level_;
    return hides(alwaysHiddenDivider()) ? Level::hidden : Level::all;
}

bool SoakSession::isExpectedOnScreen(const std::string& name) const {
    const auto order = expectedOrder();
    const auto place = std::find(order.begin(), order.end(), name);
    const auto isRightOf = [&](const char* other) {
        return std::find(place, order.end(), other) != order.end();
    };
    if (isRightOf("Velmo.Divider"))
        return true;
    if (level_ == Level::none)
        return false;
    return level_ == Level::all || !hasAlwaysHidden_ || isRightOf("Velmo.AlwaysHiddenDivider");
}

bool SoakSession::isAsExpected() const {
    if (seenLevel() != level_ || seenOrder() != expectedOrder())
        return false;
    const auto order = expectedOrder();
    return std::all_of(order.begin(), order.end(), [&](const auto& name) {
        // A divider that hides reaches to the edge of the screen and beyond.
        return name.ends_with("Divider") || isOnScreen(itemOf(name)) == isExpectedOnScreen(name);
    });
}

std::string SoakSession::differences() const {
    const auto nameOf = [](Level level) {
        return level == Level::none ? "none" : level == Level::hidden ? "hidden" : "all";
    };
    std::ostringstream text;
    text << "seen " << testing::PrintToString(seenOrder()) << " at the level " << nameOf(seenLevel())
         << ", expected " << testing::PrintToString(expectedOrder()) << " at " << nameOf(level_) << ";";
    for (const auto& name : expectedOrder()) {
        if (const auto place = x().area(itemOf(name)))
            text << " " << name << " " << place->x << "+" << place->width;
    }
    return text.str();
}

std::optional<int> SoakSession::clockWidth() const {
    const auto place = x().area(itemOf("Velmo.Clock"));
    return place ? std::optional(place->width) : std::nullopt;
}

std::vector<std::string> SoakSession::expectedIdentities() const {
    auto identities = expectedOrder();
    for (auto& name : identities) {
        if (const auto found = clients_.find(name); found != clients_.end())
            name = found->second.identity;
    }
    return identities;
}

/// What has been hidden, moved and drawn in another scale shows the same as ever.
void SoakSession::expectPictures() {
    for (const auto& [name, client] : clients_) {
        if (!client.color || !isExpectedOnScreen(name))
            continue;
        const auto seen = [&, item = itemOf(name)] {
            const auto place = x().area(item).value_or(Area{});
            return x().pixel(place.midX(), place.midY());
        };
        EXPECT_TRUE(eventually([&, color = *client.color] { return seen() == color; }))
            << name << " shows " << std::hex << seen() << " and not " << *client.color;
    }
}

void SoakSession::expectClockOfZone() {
    // One that has been switched on shows nothing until what it last showed is over.
    if (!ownZone_->isOwn() || !hasClock_ || isClockBlank_)
        return;
    const auto known = clockWidths_.find(clockLook());
    if (known != clockWidths_.end())
        EXPECT_TRUE(eventually([&] { return clockWidth() == known->second; }))
            << "a clock in " << zone_ << " is " << known->second << " wide, and not "
            << clockWidth().value_or(0);
    else if (const auto width = clockWidth(); width && comesToRest(milliseconds(200)))
        clockWidths_[clockLook()] = clockWidth().value_or(*width);
}

void SoakSession::expectAll() {
    EXPECT_TRUE(eventually([&] { return isAsExpected(); }, longestEffect)) << differences() << windows();
    EXPECT_TRUE(velmo().isRunning() && !velmo().wait(milliseconds(0))) << "Velmo runs";
    expectPictures();
    expectClockOfZone();
}

std::string SoakSession::windows() const {
    return outputOf({"xwininfo", "-root", "-tree"}, environment_);
}

}  // namespace velmo::desktop
