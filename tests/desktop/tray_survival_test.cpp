#include "built_files.h"
#include "tray_client.h"

#include "desktop_session.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <thread>

namespace velmo::desktop {

namespace {

/// Icons of several programs, some of which have one name, and a Velmo that is killed again and again.
class TraySurvival : public DesktopSession, public testing::WithParamInterface<unsigned> {
protected:
    static constexpr int killsOfATest = 50;

    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startWindowManager();
        client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
        const auto colors = [](int number) { return 0x101010U * static_cast<std::uint32_t>(number + 1); };
        for (int number = 0; number < 8; ++number)
            icons_.push_back(client_->makeIcon("icon" + std::to_string(number), TrayClient::Look(number % 4),
                                               colors(number)));
        for (int number = 0; number < 3; ++number)
            icons_.push_back(client_->makeIcon("twin", TrayClient::Look::opaque, colors(number + 8)));
    }
    void TearDown() override {
        velmo_.reset();
        client_.reset();
        DesktopSession::TearDown();
    }

    void begin() { velmo_.emplace(run({velmoProgram}, home_ / "velmo.err")); }
    void kill() {
        velmo_->signal(SIGKILL);
        velmo_->wait(milliseconds(5000));
        velmo_.reset();
        // A drag that it has seen the beginning of ends without it.
        xdotool({"mouseup", "1", "keyup", "Super_L"});
    }
    void waitUntilDocked() const {
        ASSERT_TRUE(eventually(
            [&] {
                const auto window = bar();
                return window != XCB_WINDOW_NONE && divider() != XCB_WINDOW_NONE &&
                       std::all_of(icons_.begin(), icons_.end(), [&](auto icon) {
                           return x().parent(x().parent(icon)) == window && x().isViewable(icon);
                       });
            },
            milliseconds(20000)))
            << whereabouts();
    }
    std::string whereabouts() const {
        std::ostringstream text;
        for (const auto icon : icons_)
            text << icon << " in " << x().parent(icon) << (x().isViewable(icon) ? " seen\n" : " not seen\n");
        return text.str();
    }
    void expectAllAlive() const {
        for (const auto icon : icons_) {
            ASSERT_TRUE(eventually([&] { return x().parent(icon) == x().root(); }))
                << "icon " << icon << " is not given back";
            EXPECT_FALSE(x().isViewable(icon));
        }
    }
    /// Of all of them.
    bool isOrderWritten() const { return savedOrder().size() >= icons_.size() + 2; }
    /// The icons and the divider (as 0), from right to left.
    std::vector<xcb_window_t> order() const {
        std::vector<std::pair<int, xcb_window_t>> places;
        const auto left = [&](auto window) { return -x().area(window).value_or(Area{}).x; };
        for (const auto icon : icons_)
            places.emplace_back(left(icon), icon);
        places.emplace_back(left(divider()), XCB_WINDOW_NONE);
        std::sort(places.begin(), places.end());
        std::vector<xcb_window_t> windows;
        for (const auto& [place, window] : places)
            windows.push_back(window);
        return windows;
    }
    static std::vector<xcb_window_t> without(std::vector<xcb_window_t> windows, xcb_window_t window) {
        std::erase(windows, window);
        return windows;
    }

    std::unique_ptr<TrayClient> client_;
    std::vector<xcb_window_t> icons_;
    std::optional<ChildProcess> velmo_;
};

INSTANTIATE_TEST_SUITE_P(Desktop, TraySurvival, testing::Values(1U, 2U, 3U, 4U),
                         [](const auto& suite) { return "Seed" + std::to_string(suite.param); });

TEST_P(TraySurvival, IconsLiveAndReturnToTheirPlacesWheneverVelmoIsKilled) {
    std::mt19937 random(GetParam());
    const auto between = [&](int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random);
    };
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    client_->dockWithEachTray(GetParam());
    begin();
    waitUntilDocked();
    ASSERT_TRUE(eventually([&] { return isOrderWritten(); }));
    auto expected = order();
    xcb_window_t dragged = XCB_WINDOW_NONE;

    for (int number = 0; number < killsOfATest; ++number) {
        const int kind = between(0, 4);
        const int instant = between(0, 150);
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", kill " + std::to_string(number) + " of kind " +
                     std::to_string(kind) + " after " + std::to_string(instant) + " ms");
        if (kind != 0) {
            waitUntilDocked();
            if (HasFatalFailure())
                return;
            const auto present = order();
            ASSERT_EQ(without(present, dragged), without(expected, dragged));
            expected = present;
            dragged = XCB_WINDOW_NONE;
        }
        const auto visitor = "visitor" + std::to_string(number);
        const auto moved = icons_[static_cast<std::size_t>(between(0, static_cast<int>(icons_.size()) - 1))];
        const int target = between(farLeft, 1200);
        {
            const Beside use(Beside::Times::once, [&] {
                if (kind == 1) {
                    // Also its place is written.
                    const auto icon = client_->makeIcon(visitor);
                    client_->dock(icon);
                    std::this_thread::sleep_for(milliseconds(20));
                    client_->destroy(icon);
                } else if (kind == 2) {
                    // Velmo may be dead before the icon follows.
                    superPressAndMove(moved, target);
                    releaseSuper();
                } else if (kind >= 3) {
                    click(toggle());
                }
            });
            std::this_thread::sleep_for(milliseconds(instant));
            velmo_->signal(SIGKILL);
        }
        if (kind == 2)
            dragged = moved;
        kill();
        expectAllAlive();
        ASSERT_FALSE(HasFailure());
        readDefaults();
        begin();
    }
    waitUntilDocked();
    EXPECT_EQ(without(order(), dragged), without(expected, dragged));
}

class TrayReturn : public TraySurvival {};

INSTANTIATE_TEST_SUITE_P(Desktop, TrayReturn, testing::Values(5U));

TEST_P(TrayReturn, AnotherTrayInBetweenLeavesIconsTheirPlaces) {
    client_->dockWithEachTray(GetParam());
    begin();
    waitUntilDocked();
    ASSERT_TRUE(eventually([&] { return isOrderWritten(); }));
    const auto expected = order();
    for (int round = 0; round < 4; ++round) {
        kill();
        {
            XObserver rival(environment_.at("DISPLAY"));
            const xcb_window_t owner = xcb_generate_id(rival.raw());
            xcb_create_window(rival.raw(), XCB_COPY_FROM_PARENT, owner, rival.root(), 0, 300, 400, 30, 0,
                              XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
            xcb_set_selection_owner(rival.raw(), owner, rival.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
            for (const auto icon : icons_)
                xcb_reparent_window(rival.raw(), icon, owner, 0, 0);
            ASSERT_EQ(rival.parent(icons_.back()), owner);
            for (const auto icon : icons_)
                xcb_reparent_window(rival.raw(), icon, rival.root(), 0, 0);
            ASSERT_EQ(rival.parent(icons_.back()), rival.root());
        }
        begin();
        waitUntilDocked();
        EXPECT_EQ(order(), expected);
    }
}

}  // namespace

}  // namespace velmo::desktop
