#pragma once

#include "simulated/simulated_process_info.h"
#include "simulated/simulated_status_bar.h"
#include "window_server.h"

namespace velmo {

/// Lists the windows of all status items, and whatever windows are added to them.
class SimulatedWindowServer : public WindowServer {
public:
    using WindowId = std::uint64_t;

    SimulatedWindowServer(SimulatedStatusBar& statusBar, const SimulatedScreens& screens,
                          const SimulatedProcessInfo& processInfo)
        : statusBar_(statusBar), screens_(screens), processInfo_(processInfo) {}

    std::optional<std::vector<WindowListEntry>> windowList(WindowListOption option) const override;

    /// Listed as it is, before everything of its layer; without a layer, as of layer 0.
    WindowId addWindow(const WindowListEntry& entry);
    /// A menu of another application: at the pop-up menu layer, in front of all else.
    WindowId addMenu(std::int32_t ownerPID, const Rect& bounds);
    void removeWindow(WindowId id);
    void removeAllWindows();
    void setAvailable(bool available) { available_ = available; }
    /// How often the list was asked for.
    std::uint64_t listCount() const { return listCount_; }

private:
    struct Window {
        WindowId id = 0;
        WindowListEntry entry;
    };

    static std::int64_t layerOf(const Window& window) { return window.entry.layer.value_or(0); }
    void appendStatusItems(std::vector<WindowListEntry>& list) const;

    SimulatedStatusBar& statusBar_;
    const SimulatedScreens& screens_;
    const SimulatedProcessInfo& processInfo_;
    /// Front to back.
    std::vector<Window> windows_;
    WindowId nextId_ = 1;
    bool available_ = true;
    mutable std::uint64_t listCount_ = 0;
};

}  // namespace velmo
