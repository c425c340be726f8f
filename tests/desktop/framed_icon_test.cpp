#include "bar_session.h"

#include "tray_client.h"

#include "linux/x11/reply.h"

#include <algorithm>
#include <cstdlib>

namespace velmo::desktop {

namespace {

/// A window manager as far as windows see it: it puts them into frames, and lets go those that are withdrawn.
class FakeManager {
public:
    explicit FakeManager(const std::string& display) : x_(display), window_(makeWindow()) {
        xcb_change_property(x_.raw(), XCB_PROP_MODE_REPLACE, x_.root(), x_.atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &window_);
    }

    void frame(xcb_window_t window) {
        framed_ = window;
        frame_ = makeWindow();
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(x_.raw(), frame_, XCB_CW_EVENT_MASK, &mask);
        xcb_reparent_window(x_.raw(), window, frame_, 0, 0);
        xcb_map_window(x_.raw(), window);
        xcb_map_window(x_.raw(), frame_);
        x_.exists(window);
        // What it has caused itself.
        while (auto* event = xcb_poll_for_event(x_.raw()))
            std::free(event);
    }
    void letGoWhatIsWithdrawn() const {
        while (auto* event = xcb_poll_for_event(x_.raw())) {
            if ((event->response_type & 0x7f) == XCB_UNMAP_NOTIFY)
                xcb_reparent_window(x_.raw(), framed_, x_.root(), 0, 0);
            std::free(event);
        }
        xcb_flush(x_.raw());
    }

private:
    xcb_window_t makeWindow() const {
        const xcb_window_t window = xcb_generate_id(x_.raw());
        xcb_create_window(x_.raw(), XCB_COPY_FROM_PARENT, window, x_.root(), 0, 200, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }

    XObserver x_;
    xcb_window_t window_;
    xcb_window_t framed_ = XCB_WINDOW_NONE;
    xcb_window_t frame_ = XCB_WINDOW_NONE;
};

/// An icon, and who may take it out of the bar.
class FramedIcon : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        manager_.emplace(environment_.at("DISPLAY"));
        icon_ = makeIcon(24, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0xff0000ff));
        ASSERT_TRUE(x().exists(icon_));
    }
    void TearDown() override {
        manager_.reset();
        BarSession::TearDown();
    }

    bool isInTheBar() const {
        return x().parent(x().parent(icon_)) == bar_->window() && x().isViewable(icon_);
    }
    /// The icon into a window, on behalf of a program.
    void put(const XObserver& program, xcb_window_t parent) const {
        xcb_reparent_window(program.raw(), icon_, parent, 0, 0);
        program.exists(icon_);
    }
    bool returns() {
        return turnUntil([&] {
            manager_->letGoWhatIsWithdrawn();
            return isInTheBar();
        });
    }
    /// Neither does anybody lay a hand on it after that.
    bool staysInTheBar() {
        return !turnUntil(
            [&] {
                manager_->letGoWhatIsWithdrawn();
                return !isInTheBar() || !itemOf(icon_);
            },
            milliseconds(300));
    }
    bool leaves() {
        return turnUntil([&] { return !itemOf(icon_); });
    }
    xcb_window_t makeParent(const XObserver& program) const {
        const xcb_window_t parent = xcb_generate_id(program.raw());
        xcb_create_window(program.raw(), XCB_COPY_FROM_PARENT, parent, x().root(), 0, 200, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return parent;
    }
    void mark(xcb_window_t window) const {
        const std::uint32_t normal[] = {1, 0};
        const auto name = x().atom("WM_STATE");
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, window, name, name, 32, 2, normal);
    }

    /// Until a moment before nobody waits any longer for a window manager that begins.
    void letTheManagerBegin() {
        turnUntil([] { return false; }, milliseconds(1500));
    }
    bool isListenedTo() const {
        const auto reply = x11::owned(
            xcb_get_window_attributes_reply(x().raw(), xcb_get_window_attributes(x().raw(), icon_), nullptr));
        return reply && (reply->all_event_masks & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0;
    }
    void rename(int times) const {
        for (int count = 0; count < times; ++count)
            xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, icon_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                0, nullptr);
        x().exists(icon_);
    }
    /// For a second, in which the icon may go anywhere.
    void makeNobodyListen() {
        rename(600);
        ASSERT_TRUE(turnUntil([&] { return !isListenedTo(); }));
    }
    /// A window of it that is seen, and known as an ordinary one.
    xcb_window_t showParent(const XObserver& program) const {
        const auto parent = makeParent(program);
        mark(parent);
        xcb_map_window(program.raw(), parent);
        program.exists(parent);
        return parent;
    }

    std::optional<FakeManager> manager_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

TEST_F(FramedIcon, ReturnsWhenAWindowManagerHasTakenItForAnOrdinaryWindow) {
    dock(icon_);
    const auto* item = itemOf(icon_);
    manager_->frame(icon_);
    ASSERT_FALSE(isInTheBar());
    EXPECT_TRUE(returns());
    EXPECT_TRUE(staysInTheBar());
    EXPECT_EQ(itemOf(icon_), item) << "it has kept its place";
}

TEST_F(FramedIcon, ReturnsFromAManagerThatIsKnownByItsMarkOnly) {
    dock(icon_);
    const XObserver unknown(environment_.at("DISPLAY"));
    const auto frame = makeParent(unknown);
    mark(icon_);
    x().exists(icon_);
    put(unknown, frame);
    EXPECT_TRUE(turnUntil([&] { return isInTheBar(); })) << "who does not let go is not waited for";
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, ReturnsFromAManagerThatMarksItLater) {
    dock(icon_);
    const XObserver unknown(environment_.at("DISPLAY"));
    put(unknown, makeParent(unknown));
    letTheManagerBegin();
    mark(icon_);
    x().exists(icon_);
    EXPECT_TRUE(turnUntil([&] { return isInTheBar(); }));
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, ReturnsFromAManagerThatLetsItGoBeforeItIsKnown) {
    dock(icon_);
    const XObserver unknown(environment_.at("DISPLAY"));
    put(unknown, makeParent(unknown));
    letTheManagerBegin();
    put(unknown, x().root());
    EXPECT_TRUE(turnUntil([&] { return isInTheBar(); }));
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, ComesWhenItWasFramedBeforeItDocked) {
    manager_->frame(icon_);
    sendToTray(x(), 0, icon_);
    EXPECT_TRUE(returns());
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, ReturnsWhenItWasFramedWhileItDocked) {
    const x11::TrayIconQuestions questions(*connection_, icon_);
    connection_->sync();
    manager_->frame(icon_);
    const x11::TrayIcon icon(*bar_, questions.answer().value(), "icon");
    turnUntil(
        [&] {
            manager_->letGoWhatIsWithdrawn();
            return false;
        },
        milliseconds(300));
    EXPECT_TRUE(isInTheBar());
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, StaysWhenItsProgramHadItElsewhereWhileItDocked) {
    const auto parent = makeParent(x());
    const x11::TrayIconQuestions questions(*connection_, icon_);
    connection_->sync();
    put(x(), parent);
    const x11::TrayIcon icon(*bar_, questions.answer().value(), "icon");
    EXPECT_TRUE(returns());
    EXPECT_TRUE(staysInTheBar());
    EXPECT_FALSE(icon.hasEnded());
}

TEST_F(FramedIcon, IsLeftToAManagerThatInsists) {
    constexpr int patience = 3;
    dock(icon_);
    for (int count = 0; count < patience; ++count) {
        manager_->frame(icon_);
        ASSERT_TRUE(returns()) << count;
    }
    manager_->frame(icon_);
    EXPECT_TRUE(leaves());
    EXPECT_TRUE(x().isViewable(icon_)) << "the manager shows it now";
    EXPECT_FALSE(isInTheBar());
}

TEST_F(FramedIcon, LeavesWithItsProgramForAWindowOfThatProgram) {
    dock(icon_);
    const auto parent = makeParent(x());
    mark(icon_);
    put(x(), parent);
    EXPECT_TRUE(leaves());
    EXPECT_EQ(x().parent(icon_), parent);
}

TEST_F(FramedIcon, LeavesForAWindowOfAnotherProgram) {
    dock(icon_);
    const XObserver other(environment_.at("DISPLAY"));
    const auto parent = showParent(other);
    put(other, parent);
    const std::uint32_t place[] = {7, 9, 30, 31};
    xcb_configure_window(
        other.raw(), icon_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
        place);
    other.exists(icon_);
    EXPECT_TRUE(leaves());
    EXPECT_EQ(x().parent(icon_), parent);
    const auto window = *x().area(parent);
    EXPECT_EQ(*x().area(icon_), (Area{window.x + 7, window.y + 9, 30, 31})) << "its new owner places it";
}

TEST_F(FramedIcon, LeavesForAWindowOfAnotherProgramAlsoWhileItGivesNoPeace) {
    dock(icon_);
    const XObserver other(environment_.at("DISPLAY"));
    const auto parent = showParent(other);
    put(other, parent);
    EXPECT_TRUE(turnUntil([&] {
        rename(100);
        return !itemOf(icon_);
    }));
    EXPECT_EQ(x().parent(icon_), parent);
}

TEST_F(FramedIcon, LeavesForAWindowOfAnotherProgramWhileNobodyListens) {
    dock(icon_);
    const XObserver other(environment_.at("DISPLAY"));
    const auto parent = showParent(other);
    makeNobodyListen();
    put(other, parent);
    EXPECT_TRUE(leaves());
    EXPECT_EQ(x().parent(icon_), parent);
}

TEST_F(FramedIcon, ReturnsFromAManagerThatTakesItWhileNobodyListens) {
    dock(icon_);
    makeNobodyListen();
    manager_->frame(icon_);
    EXPECT_TRUE(returns());
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, ReturnsFromAManagerThatIsKnownWhileNobodyListens) {
    dock(icon_);
    const XObserver unknown(environment_.at("DISPLAY"));
    put(unknown, makeParent(unknown));
    makeNobodyListen();
    ASSERT_TRUE(turnUntil([&] { return isListenedTo(); }));
    ASSERT_FALSE(isInTheBar());
    mark(icon_);
    x().exists(icon_);
    EXPECT_TRUE(turnUntil([&] { return isInTheBar(); }));
    EXPECT_TRUE(staysInTheBar());
}

TEST_F(FramedIcon, EndsWithItsProgramWhileNobodyListens) {
    dock(icon_);
    makeNobodyListen();
    xcb_destroy_window(x().raw(), icon_);
    x().exists(icon_);
    EXPECT_TRUE(turnUntil([&] { return !itemOf(icon_); }, milliseconds(2500))) << "nobody is looked for";
}

TEST_F(FramedIcon, StaysInAWindowOfAnotherProgramWhenTheBarEnds) {
    dock(icon_);
    const XObserver other(environment_.at("DISPLAY"));
    const auto parent = showParent(other);
    put(other, parent);
    turnUntil([] { return false; }, milliseconds(300));
    ASSERT_TRUE(itemOf(icon_)) << "whose window it is, is not known yet";
    stopBar();
    EXPECT_TRUE(
        stays([&] { return x().parent(icon_) == parent && x().isViewable(icon_); }, milliseconds(300)));
}

TEST_F(FramedIcon, LeavesForTheRootWindowAlsoAfterItHasReturnedOnce) {
    dock(icon_);
    manager_->frame(icon_);
    ASSERT_TRUE(returns());
    ASSERT_TRUE(staysInTheBar());
    xcb_reparent_window(x().raw(), icon_, x().root(), 0, 200);
    x().exists(icon_);
    EXPECT_TRUE(leaves());
    EXPECT_EQ(x().parent(icon_), x().root());
}

TEST_F(FramedIcon, EndsWithItsProgramWhileItIsWaitedFor) {
    dock(icon_);
    manager_->frame(icon_);
    EXPECT_TRUE(turnUntil([&] { return !x().isViewable(icon_); }));
    xcb_destroy_window(x().raw(), icon_);
    x().exists(icon_);
    EXPECT_TRUE(leaves());
}

}  // namespace

}  // namespace velmo::desktop
