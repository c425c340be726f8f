#include "bar_session.h"

#include "linux/x11/reserved_strip.h"

#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace velmo::desktop {

namespace {

/// A window manager that reads what a dock reserves only when it begins to manage that.
class OnceReader {
public:
    OnceReader(const std::string& display, const std::string& name) : x_(display) {
        const xcb_window_t window = xcb_generate_id(x_.raw());
        xcb_create_window(x_.raw(), XCB_COPY_FROM_PARENT, window, x_.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, window, x_.atom("_NET_WM_NAME"),
                            x_.atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(name.size()), name.data());
        xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, x_.root(), x_.atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(x_.raw(), x_.root(), XCB_CW_EVENT_MASK, &mask);
        x_.exists(window);
    }

    /// Begins to manage windows that ask for that, and lets go those that are withdrawn.
    void readOn() {
        while (auto* event = xcb_poll_for_event(x_.raw())) {
            const auto type = event->response_type & 0x7f;
            if (type == XCB_UNMAP_NOTIFY)
                letGo();
            else if (type == XCB_MAP_REQUEST)
                manage(reinterpret_cast<const xcb_map_request_event_t*>(event)->window);
            std::free(event);
        }
    }
    void showWhatIsManaged() const {
        xcb_map_window(x_.raw(), managed_);
        x_.exists(managed_);
    }
    void takeAwayWhatIsManaged() {
        xcb_unmap_window(x_.raw(), managed_);
        x_.exists(managed_);
        letGo();
    }
    /// As it was read; empty while nothing is managed.
    const std::vector<std::uint32_t>& strut() const { return strut_; }

private:
    void manage(xcb_window_t window) {
        if (std::exchange(managed_, window) != window)
            strut_ = x_.cardinals(window, "_NET_WM_STRUT_PARTIAL");
    }
    void letGo() {
        managed_ = XCB_WINDOW_NONE;
        strut_.clear();
    }

    XObserver x_;
    xcb_window_t managed_ = XCB_WINDOW_NONE;
    std::vector<std::uint32_t> strut_;
};

/// A strip at the top of one of the monitors, which lie side by side.
class StripUnderOnceReader : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        manager_ = std::make_unique<OnceReader>(environment_.at("DISPLAY"), "Fluxbox 1.3.7");
        setenv("DISPLAY", environment_.at("DISPLAY").c_str(), 1);
        std::string problem;
        connection_ = x11::Connection::open(loop_, problem);
        ASSERT_TRUE(connection_) << problem;
        strip_ = std::make_unique<x11::ReservedStrip>(*connection_);
        reserveOn(0);
        strip_->show();
        ASSERT_TRUE(hasRead(0));
        ASSERT_TRUE(isSeen());
    }
    void TearDown() override {
        strip_.reset();
        manager_.reset();
        BarSession::TearDown();
    }

    void reserveOn(std::size_t monitor) {
        const auto& [x, y, width, height] = monitors_.at(monitor);
        strip_->reserve({x, y, width, 26}, monitors_);
    }
    bool hasRead(std::size_t monitor) {
        return turnUntil(
            [&] {
                manager_->readOn();
                const auto& strut = manager_->strut();
                return strut.size() == 12 && strut[8] == static_cast<std::uint32_t>(monitors_.at(monitor).x);
            },
            milliseconds(2000));
    }
    bool isSeen() {
        manager_->showWhatIsManaged();
        return turnUntil([&] { return x().isViewable(strip_->window()); }, milliseconds(2000));
    }

    const std::vector<x11::PixelRect> monitors_ = {{0, 0, 400, 720}, {400, 0, 400, 720}, {800, 0, 480, 720}};
    std::unique_ptr<OnceReader> manager_;
    std::unique_ptr<x11::ReservedStrip> strip_;
};

TEST_F(StripUnderOnceReader, IsShownAnewForAnotherMonitor) {
    reserveOn(2);
    EXPECT_TRUE(hasRead(2));
    EXPECT_TRUE(isSeen());
}

TEST_F(StripUnderOnceReader, IsShownAnewWhereItChangesAgainBeforeItWasShown) {
    reserveOn(1);
    ASSERT_TRUE(hasRead(1));
    reserveOn(2);
    EXPECT_TRUE(hasRead(2)) << "of what was read before it was shown";
    EXPECT_TRUE(isSeen());
}

/// As a window manager may that is just starting.
TEST_F(StripUnderOnceReader, AsksOnceMoreWhereItIsShownAndTakenAwayAtOnce) {
    reserveOn(2);
    ASSERT_TRUE(hasRead(2));
    manager_->showWhatIsManaged();
    manager_->takeAwayWhatIsManaged();
    EXPECT_TRUE(hasRead(2)) << "after it was taken away";
    EXPECT_TRUE(isSeen());
}

}  // namespace

}  // namespace velmo::desktop
