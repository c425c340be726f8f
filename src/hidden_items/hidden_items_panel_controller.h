#pragma once

#include "hidden_items/panel_item.h"
#include "platform/events.h"
#include "platform/lifetime.h"
#include "platform/panel.h"
#include "platform/platform.h"
#include "platform/screens.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace velmo {

/// A strip below the toggle with pictures of the hidden items. Closes by itself on a click anywhere else, and
/// on Escape.
class HiddenItemsPanelController {
public:
    explicit HiddenItemsPanelController(const Platform& platform) : platform_(platform) {}
    HiddenItemsPanelController(const HiddenItemsPanelController&) = delete;
    HiddenItemsPanelController& operator=(const HiddenItemsPanelController&) = delete;

    std::function<void(const PanelItem&)> onActivate;
    std::function<void()> onOpenSettings;

    /// Places the panel below `anchor` (points, origin at the bottom left of the primary screen), inside of
    /// the screen. Nothing happens where the system gives no panel.
    void show(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden, const Screen& screen,
              const Rect& anchor);
    /// The panel is kept for the next time.
    void close();
    bool isVisible() const { return panel_ && panel_->isVisible(); }

    /// True where the press of this click was what closed the panel: it is then not to be opened again.
    bool wasClosedBy(const Event& click) const;

private:
    View content(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden);
    void installMonitors();
    EventDisposition localEvent(const Event& event);

    Platform platform_;
    /// Made when it is shown for the first time.
    std::unique_ptr<Panel> panel_;
    /// Present only while the panel is shown.
    std::vector<std::unique_ptr<EventMonitor>> monitors_;
    /// The number of the press that closed the panel, 0 for none.
    std::int64_t closingPress_ = 0;
    Lifetime lifetime_;
};

}  // namespace velmo
