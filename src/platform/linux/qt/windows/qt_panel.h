#pragma once

#include "linux/qt/windows/floating_window.h"
#include "linux/registration.h"
#include "panel.h"

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
    WindowNumber windowNumber() const override { return window_.number(); }

private:
    ToolkitHost& host_;
    FloatingWindow window_;
    /// Pixels of the root window.
    QPointF corner_;
    Registration shown_;
};

}  // namespace velmo
