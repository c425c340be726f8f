#include "film.h"
#include "session_bus_desktop.h"
#include "tray_client.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <thread>

namespace velmo::desktop {

namespace {

/// A program that docks many icons and leaves in one of several ways.
class Visit {
public:
    static constexpr int icons = 20;

    Visit(const std::string& display, int number) : x_(display) {
        for (int index = 0; index < icons; ++index)
            windows_.push_back(makeWindow("visitor" + std::to_string((number + index) % 40)));
    }

    /// Docks all, and waits until they are in the tray. False where that takes too long.
    bool dock() {
        const auto owner = x_.selectionOwner("_NET_SYSTEM_TRAY_S0");
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = owner;
        message.type = x_.atom("_NET_SYSTEM_TRAY_OPCODE");
        for (const auto window : windows_) {
            message.data.data32[2] = window;
            xcb_send_event(x_.raw(), 0, owner, 0, reinterpret_cast<const char*>(&message));
        }
        xcb_flush(x_.raw());
        std::set<xcb_window_t> waiting(windows_.begin(), windows_.end());
        return eventually(
            [&] {
                while (auto* event = xcb_poll_for_event(x_.raw())) {
                    if ((event->response_type & 0x7f) == XCB_REPARENT_NOTIFY)
                        waiting.erase(reinterpret_cast<xcb_reparent_notify_event_t*>(event)->window);
                    std::free(event);
                }
                return waiting.empty();
            },
            milliseconds(20000));
    }
    /// Some are destroyed, some are taken back; the others go with this object, as when a program dies.
    /// True where those that were taken back are there and free.
    bool leave() {
        bool areFree = true;
        for (std::size_t index = 0; index < windows_.size(); ++index) {
            if (index % 3 == 0)
                xcb_destroy_window(x_.raw(), windows_[index]);
            else if (index % 3 == 1)
                xcb_reparent_window(x_.raw(), windows_[index], x_.root(), 0, 0);
        }
        for (std::size_t index = 1; index < windows_.size(); index += 3)
            areFree = areFree && x_.parent(windows_[index]) == x_.root();
        return areFree;
    }

private:
    xcb_window_t makeWindow(const std::string& name) const {
        const xcb_window_t window = xcb_generate_id(x_.raw());
        // Window managers leave it alone.
        const std::uint32_t values[] = {1, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        xcb_create_window(x_.raw(), XCB_COPY_FROM_PARENT, window, x_.root(), 0, 0, 16, 16, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        const std::string wmClass = name + std::string("\0Icon", 6);
        xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
        return window;
    }

    XObserver x_;
    std::vector<xcb_window_t> windows_;
};

class TrayEndurance : public SessionBusDesktop {
protected:
    bool onlyOwnItemsAreLeft() const { return x().children(bar()).size() == 3; }
};

TEST_F(TrayEndurance, TenThousandIconsThatComeAndGoLeaveNothing) {
    constexpr int visits = 500;
    /// Kilobytes; fewer than 26 bytes an icon.
    constexpr long noise = 256;
    const auto visit = [&](int number) {
        Visit program(environment_.at("DISPLAY"), number);
        ASSERT_TRUE(program.dock()) << "visit " << number;
        ASSERT_TRUE(program.leave()) << "visit " << number;
    };
    // What is needed for the first ones is kept for the others.
    for (int number = 0; number < 50; ++number)
        visit(number);
    ASSERT_TRUE(eventually([&] { return onlyOwnItemsAreLeft(); }));
    std::this_thread::sleep_for(milliseconds(2500));
    const auto before = resources();
    const long files = openFiles();
    const long held = memory();
    for (int number = 0; number < visits && !HasFatalFailure(); ++number)
        visit(number);
    EXPECT_TRUE(eventually([&] { return onlyOwnItemsAreLeft(); }));
    std::this_thread::sleep_for(milliseconds(2500));
    EXPECT_EQ(resources(), before);
    EXPECT_EQ(openFiles(), files);
    std::printf("%ld KB more are held\n", memory() - held);
    EXPECT_LT(memory() - held, noise) << "KB, after " << held;
    const long sleepsBefore = sleeps();
    std::this_thread::sleep_for(milliseconds(2000));
    EXPECT_LE(sleeps() - sleepsBefore, 1) << "nothing goes on";
}

class ManyTrayIcons : public DesktopSession {
protected:
    static constexpr int count = 200;

    void TearDown() override {
        client_.reset();
        DesktopSession::TearDown();
    }
    void dockAll(std::optional<TrayClient::Look> look = {}) {
        client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
        for (int number = 0; number < count; ++number)
            icons_.push_back(client_->makeIcon("icon" + std::to_string(number),
                                               look.value_or(TrayClient::Look(number % 4)),
                                               0x010101U * static_cast<std::uint32_t>(number + 20)));
        const auto start = std::chrono::steady_clock::now();
        client_->dockWithEachTray(7);
        ASSERT_TRUE(eventually([&] { return areShown(); }, milliseconds(20000)));
        std::printf(
            "%d icons are in the bar after %.0f ms\n", count,
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    bool areShown() const {
        return x().children(bar()).size() == 3 + count &&
               std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return x().isViewable(icon); });
    }
    std::vector<xcb_window_t> fromRightToLeft() const {
        auto sorted = icons_;
        std::map<xcb_window_t, int> lefts;
        for (const auto icon : icons_)
            lefts[icon] = x().area(icon).value_or(Area{}).x;
        std::sort(sorted.begin(), sorted.end(),
                  [&](auto one, auto other) { return lefts[one] > lefts[other]; });
        return sorted;
    }

    std::unique_ptr<TrayClient> client_;
    std::vector<xcb_window_t> icons_;
};

TEST_F(ManyTrayIcons, EachHaveAPlaceAndKeepItWhenVelmoIsKilled) {
    startServer("7680x720x24");
    startVelmo();
    dockAll();
    if (HasFatalFailure())
        return;
    const auto order = fromRightToLeft();
    for (std::size_t index = 1; index < order.size(); ++index)
        EXPECT_EQ(x().area(order[index - 1])->x - x().area(order[index])->x, 30);
    for (const auto icon : icons_)
        EXPECT_TRUE(isOnScreen(icon));
    std::this_thread::sleep_for(milliseconds(2500));
    velmo().signal(SIGKILL);
    velmo().wait(milliseconds(5000));
    for (const auto icon : icons_)
        ASSERT_TRUE(eventually([&] { return x().parent(icon) == x().root(); }));
    startVelmo();
    ASSERT_TRUE(eventually([&] { return areShown(); }, milliseconds(20000)));
    EXPECT_EQ(fromRightToLeft(), order);
}

TEST_F(ManyTrayIcons, MoveInOneStep) {
    startServer("7680x720x24");
    std::vector<std::string> order = {"Velmo.Toggle", "Velmo.Divider"};
    for (int number = 0; number < count; ++number)
        order.push_back("icon" + std::to_string(number) + ".Icon");
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}, {"statusItemOrder", order}});
    startVelmo();
    dockAll(TrayClient::Look::translucent);
    if (HasFatalFailure())
        return;
    const Area left = {0, 13, x().area(toggle())->x - 12, 1};
    const auto toggleTo = [&](bool isRevealed) {
        click(toggle());
        ASSERT_TRUE(eventually([&] {
            return std::all_of(icons_.begin(), icons_.end(),
                               [&](auto icon) { return isRevealed ? isOnScreen(icon) : isHidden(icon); });
        }));
    };
    const auto hidden = x().pixels(left);
    for (std::uint32_t round = 1; round <= 6; ++round) {
        // Those that nobody sees are painted when they come back.
        for (const auto icon : icons_)
            client_->setColor(icon, 0x203040 * round);
        std::this_thread::sleep_for(milliseconds(100));
        Film film(environment_.at("DISPLAY"), left);
        toggleTo(true);
        std::this_thread::sleep_for(milliseconds(300));
        const auto& frames = film.frames();
        EXPECT_EQ(frames.size(), 2U) << "no state in between, round " << round;
        EXPECT_EQ(frames.front(), hidden);
        EXPECT_NE(frames.back(), hidden);
        toggleTo(false);
    }
}

}  // namespace

}  // namespace velmo::desktop
