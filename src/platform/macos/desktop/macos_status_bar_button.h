#pragma once

#include "macos/appkit/ns_status_item.h"
#include "macos/objc/instance.h"
#include "shown_menu.h"
#include "status_bar.h"

namespace velmo::macos {

class MacosStatusBarButton : public StatusBarButton {
public:
    explicit MacosStatusBarButton(NSStatusBarButton button);
    ~MacosStatusBarButton() override;
    MacosStatusBarButton(const MacosStatusBarButton&) = delete;
    MacosStatusBarButton& operator=(const MacosStatusBarButton&) = delete;

    void setImage(const std::optional<Image>& image) override;
    void setTitle(const std::string& title) override;
    void setFont(const Font& font) override;
    void setEnabled(bool enabled) override;
    void setToolTip(const std::string& text) override;
    void setAction(std::function<void()> action) override;
    void sendActionOn(EventMask mask) override;
    Size size() const override;
    void popUp(const Menu& menu, const Point& location) override;
    std::optional<Rect> frameOnScreen() const override;
    WindowNumber windowNumber() const override;
    std::optional<Screen> screen() const override;
    std::unique_ptr<TrackingArea> addTrackingArea(const Rect& rect, TrackingAreaOptions options,
                                                  TrackingAreaOwner* owner) override;

    /// What popovers are shown beside.
    const NSView& view() const { return button_; }

private:
    void clicked(const NSObject& sender);

    using Class = Subclass<MacosStatusBarButton, "VelmoStatusBarTarget", NSObject,
                           Method<"clicked:", &MacosStatusBarButton::clicked>>;

    NSStatusBarButton button_;
    std::function<void()> action_;
    Instance<MacosStatusBarButton, Class, NSObject> instance_{*this};
    /// Kept after it has closed: the system may perform the chosen item a little later.
    std::shared_ptr<ShownMenu> menu_;
};

}  // namespace velmo::macos
