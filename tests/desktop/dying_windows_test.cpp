#include "panel_window_session.h"
#include "request_tap.h"
#include "tray_client.h"

#include <cstdio>
#include <memory>
#include <optional>

namespace velmo::desktop {

namespace {

constexpr Area wholeScreen{0, 0, 1280, 720};

/// Windows of others that are gone just when Velmo asks the server for something about them: for each request
/// that names such a window there is a round in which this is the one that fails.
class DyingWindows : public PanelWindowSession {
protected:
    void SetUp() override {
        PanelWindowSession::SetUp();
        // No descriptors come through the tap, by which memory is shared.
        startServer("1280x720x24", {"-extension", "MIT-SHM"});
        tap_ = std::make_unique<RequestTap>(environment_.at("DISPLAY"));
        good_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
        writeDefaults({{"autoRehide", false},
                       {"clickAction", "showPanel"},
                       {"statusItemOrder", {"Velmo.Toggle", "good.Icon", "Velmo.Divider", "dying.Icon"}}});
        const auto display = std::exchange(environment_["DISPLAY"], tap_->display());
        startVelmo();
        environment_["DISPLAY"] = display;
        icon_ = good_->makeIcon("good", TrayClient::Look::translucent);
        good_->dock(icon_);
        good_->dockWithEachTray(1);
        ASSERT_TRUE(eventually([&] { return isInBar(icon_) && isOnScreen(icon_); }));
        place_ = *x().area(icon_);
        // What the first panel needs is kept for others.
        openPanelWindow();
        closePanel();
    }
    void TearDown() override {
        good_.reset();
        PanelWindowSession::TearDown();
        tap_.reset();
    }

    void closePanel() const {
        xdotool({"key", "Escape"});
        EXPECT_TRUE(eventually([&] { return !panelWindow(); }));
    }
    bool isInBar(xcb_window_t icon) const { return x().parent(x().parent(icon)) == bar(); }
    /// The bar is where it was, with the good icon alone.
    void expectGoodBar() {
        ASSERT_TRUE(velmo().isRunning() && !velmo().wait(milliseconds(0)));
        EXPECT_TRUE(eventually([&] {
            return x().children(bar()).size() == 4 && x().area(icon_) == place_ && isInBar(icon_) &&
                   x().area(bar()) == Area{0, 0, 1280, 26};
        }));
    }
    /// `live` is a window's life with Velmo. It returns early once the window is gone, and its number.
    void dieAtEachRequest(const std::function<xcb_window_t(int round)>& make,
                          const std::function<void(xcb_window_t)>& live, int leastRounds) {
        constexpr int mostRounds = 400;
        bool hasDied = true;
        int round = 0;
        std::map<std::string, std::uint32_t> held;
        while (hasDied && round < mostRounds) {
            const auto window = make(++round);
            tap_->destroyBefore(window, round);
            live(window);
            hasDied = !x().exists(window);
            tap_->destroyBefore(XCB_WINDOW_NONE, 0);
            xcb_destroy_window(x().raw(), window);
            expectGoodBar();
            if (HasFailure()) {
                std::printf("the one that failed was number %d\n", round);
                return;
            }
            if (round == 1)
                held = x().resources(velmo().id());
        }
        std::printf("%d requests have failed\n", round - 1);
        EXPECT_GE(round, leastRounds);
        EXPECT_TRUE(eventually([&] { return x().resources(velmo().id()) == held; }))
            << testing::PrintToString(x().resources(velmo().id())) << " against "
            << testing::PrintToString(held);
    }
    void setNumbers(xcb_window_t window, const char* name, xcb_atom_t type,
                    const std::vector<std::uint32_t>& numbers) const {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, x().atom(name), type, 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
    }
    bool waitWhileAlive(xcb_window_t window, const std::function<bool()>& condition) const {
        EXPECT_TRUE(eventually([&] { return !x().exists(window) || condition(); }));
        return x().exists(window);
    }

    std::unique_ptr<RequestTap> tap_;
    std::unique_ptr<TrayClient> good_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
    Area place_;
};

class DyingIcons : public DyingWindows, public testing::WithParamInterface<TrayClient::Look> {
protected:
    /// It is docked, renamed, resized and hidden, seen in the panel, given to another tray and taken back.
    void live(TrayClient& program, xcb_window_t icon) {
        program.dock(icon);
        if (!waitWhileAlive(icon, [&] { return isInBar(icon) && isHidden(icon); }) || !change(program, icon))
            return;
        openPanelWindow();
        closePanel();
        if (!x().exists(icon))
            return;
        giveToAnotherTray(icon);
    }
    /// False where it has died.
    bool change(TrayClient& program, xcb_window_t icon) {
        const int before = tap_->count();
        const std::string title = "Dying";
        xcb_change_property(program.x().raw(), XCB_PROP_MODE_REPLACE, icon, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(title.size()), title.data());
        program.setEmbeddingFlags(icon, 1);
        const std::uint32_t size[] = {50, 50};
        xcb_configure_window(program.x().raw(), icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size);
        xcb_unmap_window(program.x().raw(), icon);
        xcb_map_window(program.x().raw(), icon);
        program.x().exists(icon);
        if (!waitWhileAlive(icon, [&] { return tap_->count() > before && x().isViewable(icon); }))
            return false;
        comesToRest(milliseconds(300));
        return x().exists(icon);
    }
    void giveToAnotherTray(xcb_window_t icon) {
        const auto tray = x().atom("_NET_SYSTEM_TRAY_S0");
        const XObserver rival(environment_.at("DISPLAY"));
        const auto own = makeWindow({-10, -10, 1, 1}, 0);
        xcb_set_selection_owner(rival.raw(), own, tray, XCB_CURRENT_TIME);
        ASSERT_EQ(rival.selectionOwner("_NET_SYSTEM_TRAY_S0"), own);
        waitWhileAlive(icon, [&] { return x().parent(icon) == x().root(); });
        EXPECT_TRUE(eventually([&] { return x().parent(icon_) == x().root(); }));
        xcb_destroy_window(x().raw(), own);
        EXPECT_TRUE(eventually([&] { return isInBar(icon_); }));
    }
};

INSTANTIATE_TEST_SUITE_P(Desktop, DyingIcons,
                         testing::Values(TrayClient::Look::translucent, TrayClient::Look::parentRelative),
                         [](const auto& suite) {
                             return suite.param == TrayClient::Look::translucent ? "WithAlpha"
                                                                                 : "WithoutAlpha";
                         });

TEST_P(DyingIcons, AreGoneAndNothingElseIs) {
    std::optional<TrayClient> program;
    dieAtEachRequest(
        [&](int) {
            program.emplace(environment_.at("DISPLAY"));
            return program->makeIcon("dying", GetParam());
        },
        [&](xcb_window_t icon) { live(*program, icon); }, 30);
}

TEST_F(DyingWindows, ThatFillTheScreenLeaveTheBarToTheUser) {
    dieAtEachRequest(
        [&](int) {
            const auto window = makeWindow(wholeScreen, 0x406080);
            setNumbers(window, "WM_STATE", x().atom("WM_STATE"), {1, XCB_WINDOW_NONE});
            setNumbers(window, "_MOTIF_WM_HINTS", x().atom("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
            return window;
        },
        [&](xcb_window_t window) {
            setNumbers(x().root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
            setNumbers(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {window});
            if (!waitWhileAlive(window, [&] { return x().area(bar())->y < 0; }))
                return;
            xdotool({"mousemove", "400", "300", "click", "1"});
            setNumbers(window, "_NET_WM_STATE", XCB_ATOM_ATOM, {x().atom("_NET_WM_STATE_FULLSCREEN")});
            setNumbers(x().root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {window, icon_});
            comesToRest(milliseconds(300));
        },
        8);
}

}  // namespace

}  // namespace velmo::desktop
