#pragma once

#include "hostile_session.h"
#include "tray_client.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A good icon in the X11 tray, and bad ones beside it.
class HostileTraySession : public HostileSession {
protected:
    static constexpr std::uint32_t goodColor = 0x20a060;
    /// Half transparent, over the bar.
    static constexpr std::uint32_t goodColorInBar = 0x8bcbac;

    void SetUp() override {
        HostileSession::SetUp();
        good_ = std::make_unique<TrayClient>(display());
        icon_ = good_->makeIcon("good", TrayClient::Look::translucent, goodColor);
        good_->dock(icon_);
        ASSERT_TRUE(eventually([&] { return isGoodIconSeen(); }));
        place_ = *x().area(icon_);
        seen_ = x().pixels(place_);
        good_->dockWithEachTray(1);
        // Bad ones come between it and the divider.
        ASSERT_TRUE(comesToRest());
        noteWhatIsHeld();
    }
    void TearDown() override {
        good_.reset();
        HostileSession::TearDown();
    }

    std::string display() const { return environment_.at("DISPLAY"); }
    bool isGoodIconSeen() const {
        const auto place = x().area(icon_);
        return place && isOnScreen(icon_) && place->y < 26 &&
               x().pixel(place->midX(), place->midY()) == goodColorInBar;
    }
    /// The good icon is where it was, and looks as it did; of the bad ones nothing is left.
    void expectGoodIconAlone() {
        EXPECT_TRUE(eventually([&] { return x().area(icon_) == place_ && x().isViewable(icon_); }));
        EXPECT_TRUE(eventually([&] { return x().pixels(place_) == seen_; }));
        expectNothingLeft(1);
    }
    static void configure(const XObserver& program, xcb_window_t window, std::uint32_t width,
                          std::uint32_t height) {
        const std::uint32_t values[] = {width, height};
        xcb_configure_window(program.raw(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             values);
    }
    static void setOverrideRedirect(const XObserver& program, xcb_window_t window) {
        const std::uint32_t yes = 1;
        xcb_change_window_attributes(program.raw(), window, XCB_CW_OVERRIDE_REDIRECT, &yes);
    }
    bool knowsPlaceOf(const std::string& identity) const {
        const auto order = savedOrder();
        return std::find(order.begin(), order.end(), identity) != order.end();
    }
    bool isDocked(xcb_window_t icon) const {
        return x().parent(x().parent(icon)) == bar() && x().isViewable(icon);
    }
    void setProperty(const XObserver& program, xcb_window_t window, const std::string& name,
                     const std::string& type, std::uint8_t format, const std::string& bytes) const {
        xcb_change_property(program.raw(), XCB_PROP_MODE_REPLACE, window, program.atom(name),
                            program.atom(type), format,
                            static_cast<std::uint32_t>(bytes.size() / (format / 8)), bytes.data());
    }

    std::unique_ptr<TrayClient> good_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
    Area place_;
    std::vector<std::uint32_t> seen_;
};

}  // namespace velmo::desktop
