#include "bar_session.h"

#include "linux/x11/reply.h"
#include "tray_client.h"

namespace velmo::desktop {

namespace {

/// An icon, and another program that takes it without a word.
class TakenIcon : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar();
        other_.emplace(environment_.at("DISPLAY"));
        icon_ = makeIcon(24, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0xff0000ff));
        ASSERT_TRUE(x().exists(icon_));
        holder_ = xcb_generate_id(other_->raw());
        xcb_create_window(other_->raw(), XCB_COPY_FROM_PARENT, holder_, x().root(), 0, 200, 100, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    void TearDown() override {
        other_.reset();
        BarSession::TearDown();
    }

    void otherPutsIconInto(xcb_window_t parent) const {
        xcb_reparent_window(other_->raw(), icon_, parent, 0, 0);
        other_->exists(icon_);
    }
    void setEmbeddingFlags(std::uint32_t flags) const {
        const std::uint32_t info[] = {0, flags};
        const auto atom = x().atom("_XEMBED_INFO");
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, icon_, atom, atom, 32, 2, info);
        x().exists(icon_);
    }
    bool isMapped() const {
        const auto attributes = x11::owned(
            xcb_get_window_attributes_reply(x().raw(), xcb_get_window_attributes(x().raw(), icon_), nullptr));
        return attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED;
    }
    void turnFor(milliseconds time) {
        turnUntil([] { return false; }, time);
    }

    std::optional<XObserver> other_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
    xcb_window_t holder_ = XCB_WINDOW_NONE;
};

TEST_F(TakenIcon, IsLeftAsItIsWhereItIsNotKnownYetWhoHasIt) {
    dock(icon_);
    const auto place = *x().area(icon_);
    const auto slot = x().parent(icon_);
    otherPutsIconInto(holder_);
    const std::uint32_t area[] = {7, 8, 33, 44};
    xcb_unmap_window(other_->raw(), icon_);
    xcb_configure_window(
        other_->raw(), icon_,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, area);
    other_->exists(icon_);
    turnFor(milliseconds(50));
    setEmbeddingFlags(1);
    settings_->setPrefersDark(true);
    turnFor(milliseconds(400));
    ASSERT_TRUE(itemOf(icon_)) << "it may be a window manager that has it";
    EXPECT_EQ(*x().area(icon_), (Area{7, 208, 33, 44}));
    EXPECT_FALSE(isMapped());
    otherPutsIconInto(slot);
    EXPECT_TRUE(turnUntil([&] { return x().area(icon_) == place && x().isViewable(icon_); }));
}

TEST_F(TakenIcon, IsNotHiddenWhereItIsNotKnownYetWhoHasIt) {
    dock(icon_);
    otherPutsIconInto(holder_);
    turnFor(milliseconds(50));
    setEmbeddingFlags(0);
    turnFor(milliseconds(400));
    EXPECT_TRUE(isMapped());
}

TEST_F(TakenIcon, EndsWithItsProgramAlsoWhileNobodyListensAndAWindowManagerIsToLetItGo) {
    const std::uint32_t normal[] = {1, XCB_WINDOW_NONE};
    const auto mark = x().atom("WM_STATE");
    xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, icon_, mark, mark, 32, 2, normal);
    dock(icon_);
    otherPutsIconInto(holder_);
    ASSERT_TRUE(turnUntil([&] { return !isMapped(); }));
    // Then nobody listens for a second.
    for (int count = 0; count < 600; ++count)
        setEmbeddingFlags(1);
    turnFor(milliseconds(100));
    xcb_destroy_window(x().raw(), icon_);
    x().exists(icon_);
    EXPECT_TRUE(turnUntil([&] { return bar_->items().empty(); }, milliseconds(4000)));
}

TEST_F(TakenIcon, IsLookedForSeldomHoweverOftenItsProgramMovesIt) {
    dock(icon_);
    const auto slot = x().parent(icon_);
    const xcb_window_t own = xcb_generate_id(x().raw());
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, own, x().root(), 0, 200, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    turnFor(milliseconds(500));
    const auto requests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    const auto before = requests();
    constexpr int moves = 80;
    for (int count = 0; count < moves; ++count) {
        // Faster than anybody can look.
        xcb_grab_server(x().raw());
        for (const auto parent : {own, slot})
            xcb_reparent_window(x().raw(), icon_, parent, 0, 0);
        xcb_ungrab_server(x().raw());
        x().exists(icon_);
        loop_.turn();
    }
    turnFor(milliseconds(500));
    EXPECT_LT(requests() - before, 100U);
    EXPECT_TRUE(itemOf(icon_));
}

}  // namespace

}  // namespace velmo::desktop
