// What the user drags along the bar, and where it has to lie then.

#include "soak_session.h"

#include <algorithm>

namespace velmo::desktop {

namespace {

constexpr const char* innerDivider = "Velmo.Divider";
constexpr const char* outerDivider = "Velmo.AlwaysHiddenDivider";
/// One in so many drags of ours goes to the far left.
constexpr int dragsFarLeft = 4;
/// Points of a clock without a text, and its room at both sides.
constexpr int blankClock = 16;
/// With what it takes to show it.
constexpr milliseconds longestMinute(62'000);
/// From an Escape until the item is back, where that was heard.
constexpr milliseconds keyboardTaken(500);

std::ptrdiff_t indexOf(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) - names.begin();
}

bool isOurs(const std::string& name) {
    return name.starts_with("Velmo.");
}

}  // namespace

/// The one that is long, and so hides the others: nobody can take it. Empty for none.
std::string SoakSession::hidingDivider() const {
    if (level_ == Level::none)
        return innerDivider;
    return level_ == Level::hidden && hasAlwaysHidden_ ? outerDivider : "";
}

std::vector<std::string> SoakSession::expectedInReach() const {
    auto names = expectedOrder();
    std::erase_if(names, [&, hiding = hidingDivider()](const auto& name) {
        return name == hiding || !isExpectedOnScreen(name);
    });
    return names;
}

std::string SoakSession::anyInReach(const std::function<bool(const std::string&)>& condition) {
    auto names = expectedInReach();
    std::erase_if(names, [&](const auto& name) { return !condition(name); });
    return oneOf(names);
}

bool SoakSession::dragIcon() {
    return dragAnywhere(anyOnScreen());
}

bool SoakSession::hideIcon() {
    return dragFarLeft(anyOnScreen());
}

bool SoakSession::dragOurs() {
    const auto dragged = anyInReach(isOurs);
    return below(dragsFarLeft) == 0 ? dragFarLeft(dragged) : dragAnywhere(dragged);
}

/// One that shows nothing yet is too narrow to be aimed at, and of another width once the minute is over:
/// what is dragged meanwhile would come to lie elsewhere.
void SoakSession::awaitClock() {
    EXPECT_TRUE(!hasClock_ ||
                eventually([&] { return clockWidth().value_or(0) > blankClock * scale(); }, longestMinute))
        << "the clock shows nothing";
    isClockBlank_ = false;
}

bool SoakSession::dragAnywhere(const std::string& name) {
    const auto target = anyInReach([&](const auto& other) { return other != name; });
    if (name.empty() || target.empty())
        return false;
    awaitClock();
    dragBeyond(name, target);
    return true;
}

/// Where it lies beside the target when the others have closed its gap: a hand may miss that by a little.
void SoakSession::dragBeyond(const std::string& name, const std::string& target) {
    auto others = expectedOrder();
    const bool isLeftwards = indexOf(others, target) > indexOf(others, name);
    std::erase(others, name);
    const int width = x().area(itemOf(name)).value_or(Area{}).width;
    const auto place = x().area(itemOf(target)).value_or(Area{});
    const int middle = isLeftwards ? place.x + width / 2 : place.x + place.width - width / 2;
    dragTo(name, middle - 2 + below(5), indexOf(others, target) + (isLeftwards ? 1 : 0));
}

/// Left of all that is seen, and of the divider that hides the others, but not among these.
bool SoakSession::dragFarLeft(const std::string& name) {
    if (name.empty())
        return false;
    awaitClock();
    const auto leftmost = x().area(itemOf(expectedInReach().back())).value_or(Area{});
    const int width = x().area(itemOf(name)).value_or(Area{}).width;
    const int middle = std::min(farLeft, leftmost.x - width / 2);
    if (middle < 0)
        return false;
    auto others = expectedOrder();
    std::erase(others, name);
    const auto hiding = hidingDivider();
    dragTo(name, middle,
           hiding.empty() ? static_cast<std::ptrdiff_t>(others.size()) : indexOf(others, hiding) + 1);
    return true;
}

/// To the left of so many others, if it may lie there.
void SoakSession::dragTo(const std::string& name, int pixelX, std::ptrdiff_t index) {
    auto others = expectedOrder();
    std::erase(others, name);
    superDrag(itemOf(name), pixelX);
    if (name == "Velmo.Toggle")
        index = std::min(index, indexOf(others, innerDivider));
    if (name == innerDivider)
        index = std::clamp(index, indexOf(others, "Velmo.Toggle") + 1, indexOf(others, outerDivider));
    if (name == outerDivider)
        index = std::max(index, indexOf(others, innerDivider) + 1);
    std::erase(order_, name);
    order_.insert(index == 0 ? order_.begin() + indexOf(order_, others.front())
                             : order_.begin() + indexOf(order_, others[std::size_t(index) - 1]) + 1,
                  name);
    EXPECT_TRUE(eventually([&] { return isAsExpected(); }))
        << name << " was dragged to " << pixelX << ": " << differences();
}

void SoakSession::bringClockBack() {
    optionClickToggle();
    expectAll();
    awaitClock();
    dragBeyond("Velmo.Clock", "Velmo.Toggle");
    optionClickToggle();
    expectAll();
}

bool SoakSession::giveUpDrag() {
    awaitClock();
    const auto dragged = anyInReach();
    const auto target = anyInReach();
    if (dragged == target)
        return false;
    const auto item = itemOf(dragged);
    const auto before = x().area(item);
    superPressAndMove(item, x().area(itemOf(target)).value_or(Area{}).midX());
    EXPECT_TRUE(eventually([&] { return x().area(item) != before; })) << dragged << " follows the pointer";
    // A window manager that has a shortcut with Super may still have the keyboard at first.
    const auto isBack = [&] { return x().area(item) == before; };
    EXPECT_TRUE(eventually([&] {
        xdotool({"key", "Escape"});
        return eventually(isBack, keyboardTaken);
    })) << dragged
        << " is back under " << manager_ << windows();
    releaseSuper();
    return true;
}

}  // namespace velmo::desktop
