#pragma once

#include "linux/qt/windows/floating_window.h"
#include "linux/registration.h"
#include "panel.h"

#include <functional>
#include <utility>

namespace velmo {

class QtPanel : public Panel {
public:
    QtPanel(ToolkitHost& host, const PanelConfiguration& configuration);

    void setContent(const View& content) override { window_.content().setContent(content); }
    Size fittingSize() const override { return window_.fittingSize(); }
    void setFrame(const Rect& frame) override;
    void orderFrontRegardless() override;
    void orderOut() override;
    bool isVisible() const override { return window_.isVisible(); }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }
    WindowNumber windowNumber() const override { return window_.number(); }

private:
    void show();
    void followBar();
    void leave();

    ToolkitHost& host_;
    FloatingWindow window_;
    /// Points, origin at the bottom left of the primary screen.
    Rect frame_;
    /// The middle of its upper edge as long as the screen has room for it there, and the end of the bar, in
    /// the same points.
    Point top_;
    Point barEnd_;
    Registration shown_;
    std::function<void()> onClose_;
};

}  // namespace velmo
