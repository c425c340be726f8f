#include "beside.h"
#include "hostile_session.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr std::array listNames = {"_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING"};

/// Somebody says that a window manager manages thousands of windows, of which hardly any is what it should
/// be.
class HostileWindowLists : public HostileSession {
protected:
    using Windows = std::vector<xcb_window_t>;

    void SetUp() override {
        HostileSession::SetUp();
        liar_ = std::make_unique<XObserver>(environment_.at("DISPLAY"));
    }
    void TearDown() override {
        liar_.reset();
        HostileSession::TearDown();
    }

    xcb_window_t makeWindow(xcb_window_t parent, const Area& area = {0, 100, 1280, 720}) const {
        const xcb_window_t window = xcb_generate_id(liar_->raw());
        const std::uint32_t unmanaged = 1;
        xcb_create_window(liar_->raw(), XCB_COPY_FROM_PARENT, window, parent,
                          static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                          static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &unmanaged);
        xcb_map_window(liar_->raw(), window);
        return window;
    }
    /// Each in the one before it.
    Windows makeDeepTree(int depth) const {
        Windows tree = {liar_->root()};
        for (int count = 0; count < depth; ++count)
            tree.push_back(makeWindow(tree.back()));
        return tree;
    }
    void sayItFillsTheScreen(xcb_window_t window) const {
        const auto state = liar_->atom("_NET_WM_STATE_FULLSCREEN");
        xcb_change_property(liar_->raw(), XCB_PROP_MODE_REPLACE, window, liar_->atom("_NET_WM_STATE"),
                            XCB_ATOM_ATOM, 32, 1, &state);
    }
    void setLists(std::uint8_t format, xcb_atom_t type, const Windows& windows) const {
        for (const auto* name : listNames) {
            xcb_change_property(liar_->raw(), XCB_PROP_MODE_REPLACE, liar_->root(), liar_->atom(name), type,
                                format, static_cast<std::uint32_t>(windows.size() * (32U / format)),
                                windows.data());
        }
        liar_->exists(liar_->root());
    }
    Windows lies() const {
        Windows windows = makeDeepTree(50);
        for (const auto window : {windows[1], windows.back(), liar_->root()})
            sayItFillsTheScreen(window);
        windows.insert(windows.end(), {XCB_WINDOW_NONE, 1, 0xffffffff, bar(), toggle(), divider()});
        windows.insert(windows.end(), 500, liar_->root());
        Windows dead(5000);
        std::iota(dead.begin(), dead.end(), 0x1e000000);
        windows.insert(windows.end(), dead.begin(), dead.end());
        return windows;
    }

    std::unique_ptr<XObserver> liar_;
};

TEST_F(HostileWindowLists, OfThousandsOfLiesCostLittle) {
    auto windows = lies();
    const auto place = x().area(bar());
    noteWhatIsHeld();
    {
        const Beside flood(Beside::Times::untilTheEnd, [&] {
            std::rotate(windows.begin(), windows.begin() + 100, windows.end());
            setLists(32, XCB_ATOM_WINDOW, windows);
            // The server has others to serve, too.
            std::this_thread::sleep_for(milliseconds(10));
        });
        expectResponsive("lists of windows are lies");
        const int percent = load();
        std::printf("Lists of lies cost %d percent of a processor\n", percent);
        EXPECT_LT(percent, 25);
        EXPECT_EQ(x().area(bar()), place);
    }
    liar_ = std::make_unique<XObserver>(environment_.at("DISPLAY"));
    setLists(32, XCB_ATOM_WINDOW, {});
    expectNothingLeft();
}

TEST_F(HostileWindowLists, OfNoFormDoNoHarm) {
    const auto windows = lies();
    const auto place = x().area(bar());
    for (const std::uint8_t format : {8, 16, 32}) {
        for (const xcb_atom_t type : {XCB_ATOM_WINDOW, XCB_ATOM_CARDINAL, XCB_ATOM_STRING}) {
            for (const std::size_t count : {0, 1, 3, 5000}) {
                setLists(format, type,
                         {windows.begin(), windows.begin() + static_cast<std::ptrdiff_t>(count)});
                // Not in whole windows.
                xcb_change_property(liar_->raw(), XCB_PROP_MODE_APPEND, liar_->root(),
                                    liar_->atom(listNames.front()), type, format, 3, windows.data());
                liar_->exists(liar_->root());
            }
        }
        expectResponsive("lists of windows have no form");
    }
    EXPECT_EQ(x().area(bar()), place);
}

}  // namespace

}  // namespace velmo::desktop
