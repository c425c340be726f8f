#include "simulated/simulated_window_server.h"

#include <algorithm>

namespace velmo {

std::optional<std::vector<WindowListEntry>> SimulatedWindowServer::windowList(
    WindowListOption /*option*/) const {
    ++listCount_;
    if (!available_)
        return std::nullopt;
    const auto& slots = statusBar_.slots();
    std::vector<WindowListEntry> list;
    list.reserve(windows_.size() + slots.size());
    bool itemsListed = false;
    for (const Window& window : windows_) {
        // Added windows of the items' own layer are in front of the items.
        if (!itemsListed && layerOf(window) < window_layer::status) {
            appendStatusItems(list);
            itemsListed = true;
        }
        if (window.entry.isOnScreen.value_or(true))
            list.push_back(window.entry);
    }
    if (!itemsListed)
        appendStatusItems(list);
    return list;
}

void SimulatedWindowServer::appendStatusItems(std::vector<WindowListEntry>& list) const {
    if (screens_.list().empty())
        return;
    const double top = screens_.list().front().frame.maxY();
    const auto& slots = statusBar_.slots();
    // The newest is in front.
    for (std::size_t i = slots.size(); i-- > 0;) {
        const StatusItemSlot& slot = *slots[i];
        if (!statusBar_.isOnScreen(slot))
            continue;
        const Rect& frame = *slot.frame;
        WindowListEntry& entry = list.emplace_back();
        entry.number = slot.windowNumber;
        entry.layer = window_layer::status;
        entry.bounds = Rect{frame.x, top - frame.maxY(), frame.width, frame.height};
        entry.isOnScreen = true;
        if (slot.own != nullptr) {
            entry.ownerPID = processInfo_.processIdentifier();
            entry.ownerName = "Velmo";
            entry.name = slot.own->autosaveName();
        } else {
            entry.ownerPID = slot.other.ownerPID;
            entry.ownerName = slot.other.ownerName;
            entry.name = slot.other.title;
        }
    }
}

SimulatedWindowServer::WindowId SimulatedWindowServer::addWindow(const WindowListEntry& entry) {
    Window window{nextId_++, entry};
    const auto place = std::find_if(windows_.begin(), windows_.end(), [&window](const Window& other) {
        return layerOf(other) <= layerOf(window);
    });
    return windows_.insert(place, std::move(window))->id;
}

SimulatedWindowServer::WindowId SimulatedWindowServer::addMenu(std::int32_t ownerPID, const Rect& bounds) {
    WindowListEntry entry;
    constexpr std::int64_t firstMenuNumber = 1'000'000;
    entry.number = firstMenuNumber + static_cast<std::int64_t>(nextId_);
    entry.layer = window_layer::popUpMenu;
    entry.ownerPID = ownerPID;
    entry.bounds = bounds;
    entry.isOnScreen = true;
    return addWindow(entry);
}

void SimulatedWindowServer::removeWindow(WindowId id) {
    std::erase_if(windows_, [id](const Window& window) { return window.id == id; });
}

void SimulatedWindowServer::removeAllWindows() {
    windows_.clear();
}

}  // namespace velmo
