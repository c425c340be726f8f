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
        for (const auto window : windows_)
            sendToTray(x_, 0, window);
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
    /// Longer than it takes until new places are written.
    constexpr milliseconds writtenAfter(2500);
    const auto visit = [&](int number) {
        Visit program(environment_.at("DISPLAY"), number);
        ASSERT_TRUE(program.dock()) << "visit " << number;
        ASSERT_TRUE(program.leave()) << "visit " << number;
    };
    // What is needed for the first ones is kept for the others.
    for (int number = 0; number < 50; ++number)
        visit(number);
    ASSERT_TRUE(eventually([&] { return onlyOwnItemsAreLeft(); }));
    ASSERT_TRUE(comesToRest(writtenAfter));
    const auto before = resources();
    const long files = openFiles();
    const long held = memory();
    for (int number = 0; number < visits && !HasFatalFailure(); ++number)
        visit(number);
    EXPECT_TRUE(eventually([&] { return onlyOwnItemsAreLeft(); }));
    ASSERT_TRUE(comesToRest(writtenAfter));
    EXPECT_EQ(resources(), before);
    EXPECT_EQ(openFiles(), files);
    std::printf("%ld KB more are held\n", memory() - held);
    EXPECT_LT(memory() - held, noise) << "KB, after " << held;
    const long sleepsBefore = sleeps();
    std::this_thread::sleep_for(milliseconds(2000));
    EXPECT_LE(sleeps() - sleepsBefore, 1) << "nothing goes on";
}

}  // namespace

}  // namespace velmo::desktop
