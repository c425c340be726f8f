#include "running_session.h"
#include "tray_client.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace velmo::desktop {

namespace {

class Tray : public RunningSession {
protected:
    void setEmbeddingFlags(xcb_window_t window, std::uint32_t flags) const {
        const std::uint32_t info[] = {0, flags};
        const auto atom = x().atom("_XEMBED_INFO");
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, atom, atom, 32, 2, info);
        xcb_flush(x().raw());
    }

    static xcb_window_t makeWindow(const XObserver& client) {
        const xcb_window_t window = xcb_generate_id(client.raw());
        xcb_create_window(client.raw(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 16, 16, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }

    /// As if the server had told of it; to whoever made the window where the mask is empty.
    template <typename Event>
    void forge(xcb_window_t window, std::uint32_t mask, const Event& event) const {
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &event, sizeof event);
        xcb_send_event(x().raw(), 0, window, mask, bytes.data());
        xcb_flush(x().raw());
    }

    /// A window made by this test, docked like a program's and in the bar. `wmClass` as in the property.
    xcb_window_t dockWindowOfOurs(const std::string& wmClass = {}) const {
        const xcb_window_t window = makeWindow(x());
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
        setEmbeddingFlags(window, 1);
        sendToTray(x(), 0, window);
        EXPECT_TRUE(
            eventually([&] { return x().parent(x().parent(window)) == bar() && x().isViewable(window); }));
        return window;
    }
};

TEST_F(Tray, IconLeavesWithItsProgram) {
    auto program = run({"gxkb"});
    ASSERT_TRUE(eventually([&] { return x().windowOfClass(bar(), "Gxkb").has_value(); }));
    const auto items = x().children(bar()).size();
    program.end();
    EXPECT_TRUE(eventually([&] { return x().children(bar()).size() == items - 1; }));
    EXPECT_TRUE(isOnScreen(toggle()));
}

TEST_F(Tray, IconReturnsToItsPlace) {
    startTrayProgram("parcellite", "Parcellite");
    {
        auto program = run({"gxkb"});
        const auto icon = iconOf("Gxkb");
        superDrag(icon, farLeft);
        ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    }
    ASSERT_TRUE(eventually([&] { return !x().windowOfClass(bar(), "Gxkb"); }));
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(stays([&] { return isHidden(icon); }, milliseconds(300))) << "it was hidden when it left";
}

TEST_F(Tray, TwoIconsOfOneProgramHavePlacesOfTheirOwn) {
    const auto first = run({"gxkb"});
    ASSERT_TRUE(eventually([&] { return x().windowOfClass(bar(), "Gxkb").has_value(); }));
    const auto second = run({"gxkb"});
    EXPECT_TRUE(eventually([&] {
        const auto order = savedOrder();
        return std::count(order.begin(), order.end(), "gxkb.Gxkb") == 1 &&
               std::count(order.begin(), order.end(), "gxkb.Gxkb#2") == 1;
    }));
}

TEST_F(Tray, DragMovesIconsPastEachOther) {
    const auto first = startTrayProgram("gxkb", "Gxkb");
    const auto second = startTrayProgram("parcellite", "Parcellite");
    ASSERT_TRUE(eventually([&] { return isOnScreen(first) && isOnScreen(second); }));
    ASSERT_LT(x().area(second)->x, x().area(first)->x) << "the newest stands next to the divider";
    superDrag(second, x().area(first)->midX() + 5);
    EXPECT_TRUE(eventually([&] { return x().area(second)->x > x().area(first)->x; }));
    // They pass each other while the icon is held.
    const std::vector<std::string> order = {"Velmo.Toggle", "parcellite.Parcellite", "gxkb.Gxkb",
                                            "Velmo.Divider"};
    EXPECT_TRUE(eventually([&] { return savedOrder() == order; })) << testing::PrintToString(savedOrder());
}

TEST_F(Tray, DraggedIconFollowsThePointerAndNeighboursMakeRoom) {
    const auto first = startTrayProgram("gxkb", "Gxkb");
    const auto second = startTrayProgram("parcellite", "Parcellite");
    const auto left = *x().area(second);
    const auto right = *x().area(first);
    xdotool({"mousemove", std::to_string(left.midX()), "13", "keydown", "Super_L", "mousedown", "1",
             "mousemove", std::to_string(left.midX() + 10), "13", "mousemove",
             std::to_string(right.midX() - 4), "13"});
    EXPECT_TRUE(eventually([&] { return x().area(second)->midX() == right.midX() - 4; }));
    EXPECT_EQ(x().area(first)->x, left.x);
    xdotool({"mouseup", "1", "keyup", "Super_L"});
    EXPECT_TRUE(eventually([&] { return *x().area(second) == right; }));
}

TEST_F(Tray, ToggleCannotBeDraggedToWhereItWouldHideItself) {
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(toggle(), farLeft);
    EXPECT_TRUE(eventually([&] { return x().area(toggle())->x < x().area(icon)->x; }));
    EXPECT_TRUE(isOnScreen(toggle()));
    EXPECT_EQ(savedOrder(), (std::vector<std::string>{"gxkb.Gxkb", "Velmo.Toggle", "Velmo.Divider"}));
}

TEST_F(Tray, IconWindowOutlivesVelmo) {
    const auto window = dockWindowOfOurs();
    velmo().signal(SIGKILL);
    velmo().wait(milliseconds(2000));
    EXPECT_TRUE(eventually([&] { return x().parent(window) == x().root(); }));
    EXPECT_TRUE(stays([&] { return !x().isViewable(window); }, milliseconds(300))) << "kept out of sight";
}

TEST_F(Tray, IconWindowIsGivenBackWhenVelmoEnds) {
    const auto window = dockWindowOfOurs();
    stopVelmo();
    EXPECT_TRUE(eventually([&] { return x().parent(window) == x().root(); }));
    EXPECT_FALSE(x().isViewable(window));
    EXPECT_EQ(x().selectionOwner("_NET_SYSTEM_TRAY_S0"), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(Tray, IconsReturnAfterASuddenEnd) {
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    superDrag(icon, farLeft);
    ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    velmo().signal(SIGKILL);
    velmo().wait(milliseconds(2000));
    startVelmo();
    const auto returned = iconOf("Gxkb");
    EXPECT_TRUE(eventually([&] { return isHidden(returned); })) << "it was hidden before";
    click(toggle());
    EXPECT_TRUE(eventually([&] { return isOnScreen(returned); }));
}

TEST_F(Tray, TransparentPartsOfAnIconShowTheBar) {
    const auto icon = startTrayProgram("parcellite", "Parcellite");
    const auto place = *x().area(icon);
    EXPECT_TRUE(eventually([&] { return x().pixel(place.x, place.y) == lightBar; })) << "a corner";
    EXPECT_TRUE(eventually([&] { return x().pixel(place.midX(), place.midY()) != lightBar; }))
        << "the middle";
}

TEST_F(Tray, HostileDockRequestsCostNothing) {
    const auto items = x().children(bar()).size();
    const auto owner = x().selectionOwner("_NET_SYSTEM_TRAY_S0");
    const xcb_window_t nobodys = 0xdeadbeef;
    for (const auto window : {xcb_window_t{XCB_WINDOW_NONE}, x().root(), bar(), toggle(), owner, nobodys}) {
        for (const std::uint32_t opcode : {0U, 1U, 2U, 77U})
            sendToTray(x(), opcode, window);
    }
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon) && isOnScreen(toggle()); }));
    EXPECT_EQ(x().children(bar()).size(), items + 1);
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
}

TEST_F(Tray, ClientsThatDieWhileTheyDockLeaveNothing) {
    const auto items = x().children(bar()).size();
    const auto order = savedOrder();
    for (int count = 0; count < 100; ++count) {
        XObserver client(environment_.at("DISPLAY"));
        const xcb_window_t window = makeWindow(client);
        sendToTray(client, 0, window);
    }
    const auto icon = startTrayProgram("gxkb", "Gxkb");
    EXPECT_TRUE(eventually([&] { return isOnScreen(icon) && x().children(bar()).size() == items + 1; }));
}

TEST_F(Tray, ForgedEventsTakeNoIconAway) {
    const auto window = dockWindowOfOurs();
    const auto staysThere = [&] {
        return stays([&] { return isOnScreen(window) && x().parent(x().parent(window)) == bar(); },
                     milliseconds(300));
    };
    xcb_reparent_notify_event_t moved{};
    moved.response_type = XCB_REPARENT_NOTIFY;
    moved.event = window;
    moved.window = window;
    moved.parent = x().root();
    forge(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY, moved);
    EXPECT_TRUE(staysThere()) << "it has gone elsewhere, they say";
    xcb_destroy_notify_event_t gone{};
    gone.response_type = XCB_DESTROY_NOTIFY;
    gone.event = window;
    gone.window = window;
    forge(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY, gone);
    EXPECT_TRUE(staysThere());
    const auto tray = x().selectionOwner("_NET_SYSTEM_TRAY_S0");
    ASSERT_NE(tray, XCB_WINDOW_NONE);
    xcb_selection_clear_event_t lost{};
    lost.response_type = XCB_SELECTION_CLEAR;
    lost.owner = tray;
    lost.selection = x().atom("_NET_SYSTEM_TRAY_S0");
    forge(tray, XCB_EVENT_MASK_NO_EVENT, lost);
    EXPECT_TRUE(staysThere()) << "another has become the tray, they say";
    EXPECT_EQ(x().selectionOwner("_NET_SYSTEM_TRAY_S0"), tray);
}

TEST_F(Tray, ForgedClicksOnTheToggleDoNothing) {
    const bool before = dividerIsExpanded();
    const auto place = x().area(toggle()).value();
    xcb_button_press_event_t press{};
    press.detail = XCB_BUTTON_INDEX_1;
    press.root = x().root();
    press.event = toggle();
    press.root_x = static_cast<std::int16_t>(place.midX());
    press.root_y = static_cast<std::int16_t>(place.midY());
    press.event_x = static_cast<std::int16_t>(place.width / 2);
    press.event_y = static_cast<std::int16_t>(place.height / 2);
    press.same_screen = 1;
    for (const auto type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
        press.response_type = static_cast<std::uint8_t>(type);
        press.state = type == XCB_BUTTON_RELEASE ? std::uint16_t{XCB_BUTTON_MASK_1} : std::uint16_t{0};
        forge(toggle(), XCB_EVENT_MASK_NO_EVENT, press);
    }
    EXPECT_TRUE(stays([&] { return dividerIsExpanded() == before; }, milliseconds(500)));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return dividerIsExpanded() != before; })) << "real ones do";
}

TEST_F(Tray, WindowTakenBackIsFreeAgain) {
    const auto window = dockWindowOfOurs();
    // So that the window manager leaves it alone.
    const std::uint32_t yes = 1;
    xcb_change_window_attributes(x().raw(), window, XCB_CW_OVERRIDE_REDIRECT, &yes);
    const auto items = x().children(bar()).size();
    xcb_reparent_window(x().raw(), window, x().root(), 50, 300);
    const std::uint32_t values[] = {200, 150};
    xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    xcb_flush(x().raw());
    EXPECT_TRUE(eventually([&] { return x().children(bar()).size() == items - 1; }));
    EXPECT_TRUE(x().exists(window));
    EXPECT_EQ(x().area(window)->width, 200);

    sendToTray(x(), 0, window);
    EXPECT_TRUE(eventually([&] { return x().children(bar()).size() == items && isOnScreen(window); }));
}

TEST_F(Tray, IconThatLeavesWhileItIsDraggedLeavesTheOrderAlone) {
    auto program = run({"gxkb"});
    const auto icon = iconOf("Gxkb");
    const auto place = *x().area(icon);
    xdotool({"mousemove", std::to_string(place.midX()), "13", "keydown", "Super_L", "mousedown", "1",
             "mousemove", std::to_string(place.midX() - 20), "13", "mousemove", "300", "13"});
    program.end();
    ASSERT_TRUE(eventually([&] { return !x().windowOfClass(bar(), "Gxkb"); }));
    xdotool({"mousemove", "200", "13", "mouseup", "1", "keyup", "Super_L"});
    EXPECT_TRUE(isOnScreen(toggle()));
    stopVelmo();
    EXPECT_EQ(savedOrder(), (std::vector<std::string>{"Velmo.Toggle", "gxkb.Gxkb", "Velmo.Divider"}));
}

/// How often the file of the settings was replaced since this was made.
class Replacements {
public:
    explicit Replacements(const std::filesystem::path& file)
        : name_(file.filename()), inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(inotify_, file.parent_path().c_str(), IN_MOVED_TO);
    }
    ~Replacements() { close(inotify_); }
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;

    int count() {
        alignas(inotify_event) std::array<char, 4096> events{};
        for (ssize_t size = 0; (size = read(inotify_, events.data(), events.size())) > 0;) {
            for (const char* next = events.data(); next < events.data() + size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(next);
                count_ += event->name == name_ ? 1 : 0;
                next += sizeof(inotify_event) + event->len;
            }
        }
        return count_;
    }

private:
    std::string name_;
    int inotify_;
    int count_ = 0;
};

TEST_F(Tray, NewIconsDoNotHaveTheOrderWrittenOneByOneAndNoneOfThemIsLost) {
    constexpr int count = 20;
    constexpr double pause = 2;
    Replacements replacements(defaultsFile());
    const auto start = std::chrono::steady_clock::now();
    for (int number = 0; number < count; ++number)
        dockWindowOfOurs("icon" + std::to_string(number) + std::string("\0Icon", 5));
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    EXPECT_LE(replacements.count(), 2 + static_cast<int>(passed.count() / pause));
    stopVelmo();
    const auto order = savedOrder();
    for (int number = 0; number < count; ++number) {
        const auto identity = "icon" + std::to_string(number) + ".Icon";
        EXPECT_TRUE(std::any_of(order.begin(), order.end(), [&](const auto& entry) {
            return entry.ends_with(identity);
        })) << identity;
    }
}

TEST_F(Tray, NamesOfOurOwnItemsAreTaken) {
    const auto window = dockWindowOfOurs(std::string("Velmo\0Divider\0", 14));
    EXPECT_TRUE(isOnScreen(window));
    stopVelmo();
    const auto order = savedOrder();
    EXPECT_EQ(std::count(order.begin(), order.end(), "Velmo.Divider"), 1);
    EXPECT_EQ(std::count(order.begin(), order.end(), "other.Velmo.Divider"), 1);
}

TEST_F(Tray, FloodOfChangesLeavesTheBarResponsive) {
    const auto window = dockWindowOfOurs();
    for (int count = 0; count < 20000; ++count)
        setEmbeddingFlags(window, 1);
    const auto start = std::chrono::steady_clock::now();
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(2000));
}

TEST_F(Tray, AnotherTrayGetsTheIconsAndGivesThemBack) {
    startTrayProgram("gxkb", "Gxkb");
    XObserver rival(environment_.at("DISPLAY"));
    const xcb_window_t window = makeWindow(rival);
    xcb_set_selection_owner(rival.raw(), window, rival.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    ASSERT_EQ(rival.selectionOwner("_NET_SYSTEM_TRAY_S0"), window);
    EXPECT_TRUE(eventually([&] { return !x().windowOfClass(bar(), "Gxkb"); }));
    EXPECT_TRUE(isOnScreen(toggle()));
    xcb_destroy_window(rival.raw(), window);
    xcb_flush(rival.raw());
    EXPECT_TRUE(isOnScreen(iconOf("Gxkb")));
}

TEST_F(Tray, AnotherTrayKeepsTheIconThatItHasTakenAlready) {
    const auto icon = dockWindowOfOurs();
    const auto items = x().children(bar()).size();
    XObserver rival(environment_.at("DISPLAY"));
    const xcb_window_t window = makeWindow(rival);
    velmo().signal(SIGSTOP);
    xcb_set_selection_owner(rival.raw(), window, rival.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    xcb_map_window(rival.raw(), window);
    xcb_reparent_window(rival.raw(), icon, window, 0, 0);
    EXPECT_TRUE(eventually([&] { return rival.isViewable(icon); }));
    velmo().signal(SIGCONT);
    EXPECT_TRUE(eventually([&] { return x().children(bar()).size() == items - 1; }));
    EXPECT_EQ(x().parent(icon), window);
    EXPECT_TRUE(x().isViewable(icon));
}

TEST_F(Tray, WindowThatInsistsOnASizeOfItsOwnIsKeptInItsPlace) {
    const auto window = dockWindowOfOurs();
    auto place = *x().area(window);
    // It is shown a moment before it is given its place.
    ASSERT_TRUE(eventually([&] {
        place = *x().area(window);
        return stays([&] { return *x().area(window) == place; }, milliseconds(100));
    }));
    for (std::uint32_t size = 1; size < 200; ++size) {
        const std::uint32_t values[] = {size, size};
        xcb_configure_window(x().raw(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    }
    xcb_flush(x().raw());
    EXPECT_TRUE(eventually([&] { return *x().area(window) == place; }));
}

TEST_F(Tray, IconFollowsTheEmbeddingFlag) {
    const auto window = dockWindowOfOurs();
    setEmbeddingFlags(window, 0);
    EXPECT_TRUE(eventually([&] { return !x().isViewable(window); }));
    setEmbeddingFlags(window, 1);
    EXPECT_TRUE(eventually([&] { return isOnScreen(window); }));
}

}  // namespace

}  // namespace velmo::desktop
