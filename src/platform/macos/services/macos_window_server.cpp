#include "macos_window_server.h"

#include "macos/core_graphics/window_list.h"
#include "macos/foundation/ns_array.h"
#include "macos/foundation/ns_dictionary.h"
#include "macos/foundation/ns_number.h"

namespace velmo::macos {
namespace {

template <typename Number>
std::optional<Number> numberIn(const NSDictionary& entry, const NSString& key) {
    const auto number = as<NSNumber>(entry.objectForKey(key));
    const auto whole = static_cast<Number>(number.integerValue());
    // One with a fraction, or too large a one, is another number.
    return number && static_cast<double>(whole) == number.doubleValue() ? std::optional(whole) : std::nullopt;
}

std::optional<std::string> textIn(const NSDictionary& entry, const NSString& key) {
    const auto text = as<NSString>(entry.objectForKey(key));
    return text ? std::optional(text.text()) : std::nullopt;
}

std::optional<Rect> boundsIn(const NSDictionary& entry) {
    const auto dictionary = as<NSDictionary>(entry.objectForKey(core_graphics::windowBounds.value()));
    CGRect rect;
    if (!dictionary || !core_graphics::makeRect(dictionary.get(), &rect))
        return std::nullopt;
    return rectOf(rect);
}

std::optional<bool> isOnScreen(const NSDictionary& entry) {
    const auto flag = as<NSNumber>(entry.objectForKey(core_graphics::windowIsOnScreen.value()));
    return flag ? std::optional(flag.boolValue()) : std::nullopt;
}

WindowListEntry entryFrom(const NSDictionary& entry) {
    return {.number = numberIn<std::int64_t>(entry, core_graphics::windowNumber.value()),
            .layer = numberIn<std::int64_t>(entry, core_graphics::windowLayer.value()),
            .ownerPID = numberIn<std::int32_t>(entry, core_graphics::windowOwnerPID.value()),
            .ownerName = textIn(entry, core_graphics::windowOwnerName.value()),
            .name = textIn(entry, core_graphics::windowName.value()),
            .bounds = boundsIn(entry),
            .isOnScreen = isOnScreen(entry)};
}

}  // namespace

std::optional<std::vector<WindowListEntry>> MacosWindowServer::windowList(WindowListOption option) const {
    constexpr std::uint32_t noWindow = 0;
    const auto list =
        as<NSArray>(core_graphics::copyWindowInfo(static_cast<CGWindowListOption>(option), noWindow));
    if (!list)
        return std::nullopt;
    const std::vector<NSDictionary> windows = list.all<NSDictionary>();
    // With anything else among them it is no list of windows.
    if (windows.size() != list.count())
        return std::nullopt;
    std::vector<WindowListEntry> entries;
    entries.reserve(windows.size());
    for (const NSDictionary& window : windows)
        entries.push_back(entryFrom(window));
    return entries;
}

}  // namespace velmo::macos
