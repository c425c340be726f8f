#pragma once

#include "macos/appkit/ns_window_controller.h"
#include "macos/foundation/ns_notification_center.h"
#include "macos/objc/instance.h"
#include "macos/views/view_host.h"
#include "tab_toolbar.h"
#include "window.h"

namespace velmo::macos {

class MacosWindow : public Window {
public:
    MacosWindow(RunLoop& loop, const View& content);
    ~MacosWindow() override;
    MacosWindow(const MacosWindow&) = delete;
    MacosWindow& operator=(const MacosWindow&) = delete;

    void setContent(const View& content) override;
    void setTitle(const std::string& title) override { window_.setTitle(NSString::from(title)); }
    void setStyleMask(std::uint64_t mask) override { window_.setStyleMask(NSWindowStyleMask{mask}); }
    /// Windows live as long as their owners want them, closed or not.
    void setReleasedWhenClosed(bool /*released*/) override {}
    void center() override { window_.center(); }
    void setFrameAutosaveName(const std::string& name) override {
        window_.setFrameAutosaveName(NSString::from(name));
    }
    /// Also in front of the applications that the user works with: to be made the active one is no more than
    /// a request, which the system may turn down.
    void makeKeyAndOrderFront() override;
    /// Also while it is miniaturized: what it shows is looked at again.
    bool isVisible() const override { return window_.isVisible() || window_.isMiniaturized(); }
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

private:
    void willClose(const NSNotification& notification);
    void closed() const;

    using Class = Subclass<MacosWindow, "VelmoWindowDelegate", NSObject,
                           Method<"windowWillClose:", &MacosWindow::willClose, "NSWindowDelegate">>;

    RunLoop& loop_;
    ViewHost host_;
    NSWindow window_;
    TabToolbar tabs_;
    NSWindowController controller_;
    std::function<void()> onClose_;
    Instance<MacosWindow, Class, NSObject> delegate_{*this};
    Lifetime lifetime_;
};

}  // namespace velmo::macos
