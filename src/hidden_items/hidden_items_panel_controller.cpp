#include "hidden_items/hidden_items_panel_controller.h"

#include "hidden_items/hidden_items_panel_view.h"
#include "platform/hanging_frame.h"
#include "platform/run_loop.h"
#include "platform/window_factory.h"
#include "platform/window_server.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

/// Points between the toggle and the panel.
constexpr double anchorDistance = 6;

constexpr EventMask presses = maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown);

constexpr PanelConfiguration configuration{
    .styleMask = panel_style::borderless | panel_style::nonactivatingPanel | panel_style::fullSizeContentView,
    .level = window_layer::popUpMenu,
    .collectionBehavior = collection_behavior::canJoinAllSpaces | collection_behavior::transient |
                          collection_behavior::fullScreenAuxiliary,
    .isFloating = true,
    .hidesOnDeactivate = false,
    .hasShadow = true,
    .animationBehavior = animation_behavior::utilityWindow,
    .material = panel_material::menu,
    .blendingMode = blending_mode::behindWindow,
    .materialState = material_state::active,
    .cornerRadius = 10,
    .accessibilityLabel = "Hidden items",
};

}  // namespace

void HiddenItemsPanelController::show(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden,
                                      const Screen& screen, const Rect& anchor) {
    closingPress_ = 0;
    if (!panel_)
        panel_ = platform_.windows.makePanel(configuration);
    if (!panel_)
        return;
    panel_->setOnClose(lifetime_.guard([this] { close(); }));
    panel_->setContent(content(std::move(hidden), std::move(alwaysHidden)));
    panel_->setFrame(hangingFrame(anchor.midX(), anchor.minY() - anchorDistance, panel_->fittingSize(),
                                  screen.visibleFrame));
    panel_->orderFrontRegardless();
    installMonitors();
}

View HiddenItemsPanelController::content(std::vector<PanelItem> hidden, std::vector<PanelItem> alwaysHidden) {
    // Copies: a callback may replace itself, or end this controller.
    const HiddenItemsPanelView view{std::move(hidden), std::move(alwaysHidden),
                                    lifetime_.guard([this](const PanelItem& item) {
                                        if (const auto callback = onActivate)
                                            callback(item);
                                    }),
                                    lifetime_.guard([this] {
                                        if (const auto callback = onOpenSettings)
                                            callback();
                                    })};
    return view.body();
}

void HiddenItemsPanelController::installMonitors() {
    monitors_.clear();
    const auto keep = [this](std::unique_ptr<EventMonitor> monitor) {
        if (monitor)
            monitors_.push_back(std::move(monitor));
    };
    keep(platform_.events.addGlobalMonitor(presses, lifetime_.guard([this](const Event&) {
        platform_.runLoop.post(lifetime_.guard([this] { close(); }));
    })));
    auto seen = lifetime_.guard(
        [this](const Event& event, EventDisposition& disposition) { disposition = localEvent(event); });
    keep(platform_.events.addLocalMonitor(presses | maskOf(EventType::keyDown),
                                          [seen = std::move(seen)](const Event& event) mutable {
                                              auto disposition = EventDisposition::pass;
                                              seen(event, disposition);
                                              return disposition;
                                          }));
}

EventDisposition HiddenItemsPanelController::localEvent(const Event& event) {
    if (event.type == EventType::keyDown) {
        if (event.keyCode != escapeKeyCode)
            return EventDisposition::pass;
        close();
        return EventDisposition::swallow;
    }
    if (panel_ && event.windowNumber != panel_->windowNumber()) {
        close();
        closingPress_ = event.eventNumber;
    }
    return EventDisposition::pass;
}

void HiddenItemsPanelController::close() {
    if (panel_)
        panel_->orderOut();
    monitors_.clear();
}

bool HiddenItemsPanelController::wasClosedBy(const Event& click) const {
    return closingPress_ != 0 && closingPress_ == click.eventNumber;
}

}  // namespace velmo
