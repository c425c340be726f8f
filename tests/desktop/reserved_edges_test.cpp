#include "bar_session.h"

#include "linux/x11/reserved_edges.h"

#include <vector>

namespace velmo::desktop {

namespace {

using x11::PixelRect;

/// On a screen of 1280 by 720 pixels, with what a window manager says of docks.
class ReservedEdges : public BarSession {
protected:
    static constexpr PixelRect whole{0, 0, 1280, 720};

    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        edges_.emplace(*connection_);
    }
    void TearDown() override {
        edges_.reset();
        BarSession::TearDown();
    }

    void setNumbers(xcb_window_t window, const char* name, const std::vector<std::uint32_t>& numbers,
                    xcb_atom_t type = XCB_ATOM_CARDINAL) const {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, x().atom(name), type, 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
        x().exists(window);
    }
    xcb_window_t makeDock(const char* property, const std::vector<std::uint32_t>& numbers) const {
        const xcb_window_t window = xcb_generate_id(x().raw());
        xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(), 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        setNumbers(window, property, numbers);
        return window;
    }
    void manage(const std::vector<std::uint32_t>& windows) const {
        setNumbers(x().root(), "_NET_CLIENT_LIST", windows, XCB_ATOM_WINDOW);
    }
    bool leave(const PixelRect& monitor, const PixelRect& wanted) {
        return turnUntil([&] { return edges_->within(monitor) == wanted; }, milliseconds(1000));
    }

    std::optional<x11::ReservedEdges> edges_;
};

TEST_F(ReservedEdges, AreWhatDocksHaveUntilTheyGo) {
    EXPECT_EQ(edges_->within(whole), whole);
    const auto right = makeDock("_NET_WM_STRUT_PARTIAL", {0, 60, 0, 0, 0, 0, 0, 719, 0, 0, 0, 0});
    const auto left = makeDock("_NET_WM_STRUT_PARTIAL", {50, 0, 0, 0, 100, 200, 0, 0, 0, 0, 0, 0});
    const auto lower = makeDock("_NET_WM_STRUT", {0, 0, 0, 40});
    EXPECT_EQ(edges_->within(whole), whole) << "not managed yet";
    manage({right});
    EXPECT_TRUE(leave(whole, {0, 0, 1220, 720}));
    manage({right, left});
    EXPECT_TRUE(leave(whole, {50, 0, 1170, 720}));
    manage({right, left, lower});
    EXPECT_TRUE(leave(whole, {50, 0, 1170, 680}));
    manage({left});
    EXPECT_TRUE(leave(whole, {50, 0, 1230, 720}));
    manage({});
    EXPECT_TRUE(leave(whole, whole));
}

TEST_F(ReservedEdges, FollowADockThatChangesItsMind) {
    const auto dock = makeDock("_NET_WM_STRUT_PARTIAL", {0, 60, 0, 0, 0, 0, 0, 719, 0, 0, 0, 0});
    manage({dock});
    ASSERT_TRUE(leave(whole, {0, 0, 1220, 720}));
    setNumbers(dock, "_NET_WM_STRUT_PARTIAL", {0, 90, 0, 0, 0, 0, 0, 719, 0, 0, 0, 0});
    // As window managers tell of it.
    setNumbers(x().root(), "_NET_WORKAREA", {0, 0, 1190, 720});
    EXPECT_TRUE(leave(whole, {0, 0, 1190, 720}));
}

TEST_F(ReservedEdges, OfTheBarItselfAndAtTheTopAreNotTaken) {
    const auto own = connection_->newId();
    xcb_create_window(connection_->raw(), XCB_COPY_FROM_PARENT, own, connection_->root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    connection_->setCardinals(own, connection_->atoms().netWmStrut, {10, 10, 10, 10});
    connection_->sync();
    const auto other = makeDock("_NET_WM_STRUT", {0, 30, 40, 0});
    manage({own, other});
    EXPECT_TRUE(leave(whole, {0, 0, 1250, 720}));
}

TEST_F(ReservedEdges, AreThoseOfTheirMonitorAlone) {
    constexpr PixelRect first{0, 0, 960, 720};
    constexpr PixelRect second{960, 0, 320, 360};
    constexpr PixelRect third{960, 360, 320, 360};
    // At the inner edge of the first one, reaching across the others; then below the second one's lower edge.
    const auto inner = makeDock("_NET_WM_STRUT_PARTIAL", {0, 370, 0, 0, 0, 0, 0, 719, 0, 0, 0, 0});
    const auto outer = makeDock("_NET_WM_STRUT_PARTIAL", {0, 20, 0, 0, 0, 0, 360, 719, 0, 0, 0, 0});
    manage({inner, outer});
    EXPECT_TRUE(leave(first, {0, 0, 910, 720}));
    EXPECT_EQ(edges_->within(second), second);
    EXPECT_EQ(edges_->within(third), (PixelRect{960, 360, 300, 360}));
}

TEST_F(ReservedEdges, OfNoSenseAreNotTaken) {
    constexpr std::uint32_t huge = 0xfffffff0;
    const auto swallowing = makeDock("_NET_WM_STRUT", {huge, huge, huge, huge});
    const auto crossing = makeDock("_NET_WM_STRUT", {800, 800, 0, 0});
    const auto tooShort = makeDock("_NET_WM_STRUT_PARTIAL", {0, 60, 0, 0});
    const auto lower = makeDock("_NET_WM_STRUT", {0, 0, 0, 40});
    manage({swallowing, tooShort, 0xdeadbee, lower});
    EXPECT_TRUE(leave(whole, {0, 0, 1280, 680}));
    manage({swallowing, crossing});
    EXPECT_TRUE(leave(whole, whole));
}

}  // namespace

}  // namespace velmo::desktop
