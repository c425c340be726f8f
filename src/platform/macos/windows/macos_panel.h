#pragma once

#include "macos/appkit/ns_panel.h"
#include "macos/appkit/ns_visual_effect_view.h"
#include "macos/views/view_host.h"
#include "panel.h"

namespace velmo::macos {

class MacosPanel : public Panel {
public:
    MacosPanel(RunLoop& loop, const PanelConfiguration& configuration);
    ~MacosPanel() override;
    MacosPanel(const MacosPanel&) = delete;
    MacosPanel& operator=(const MacosPanel&) = delete;

    void setContent(const View& content) override { host_.setContent(content); }
    Size fittingSize() const override { return host_.fittingSize(); }
    void setFrame(const Rect& frame) override;
    void orderFrontRegardless() override { panel_.orderFrontRegardless(); }
    void orderOut() override { panel_.orderOut(); }
    bool isVisible() const override { return panel_.isVisible(); }
    /// The system closes no panel by itself: none has a button for it.
    void setOnClose(std::function<void()> /*handler*/) override {}
    WindowNumber windowNumber() const override { return panel_.windowNumber(); }

private:
    NSPanel panel_;
    NSVisualEffectView background_ = NSVisualEffectView::create();
    ViewHost host_;
};

}  // namespace velmo::macos
