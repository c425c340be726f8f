#include "bar_session.h"

#include "linux/x11/status_item_window.h"

#include <poll.h>

#include <cstdlib>
#include <functional>
#include <memory>

namespace velmo::desktop {

namespace {

/// An item of another program that tells of what happens to it.
class WatchedItem : public x11::BarItem {
public:
    WatchedItem(x11::MenuBar& bar, const std::string& identity)
        : BarItem(bar.connection(), bar.window()), bar_(bar) {
        setIdentity(identity);
        bar_.addItem(*this);
    }
    ~WatchedItem() override { bar_.removeItem(*this); }

    bool isOurs() const override { return false; }
    bool isShown() const override { return true; }
    int preferredWidth() const override { return 30; }
    void appearanceChanged() override {}
    void displayIfNeeded() override { ++layouts; }
    WindowListEntry describe() const override { return {}; }
    void willMove(const x11::PixelRect& place) override {
        expected = place;
        if (onWillMove)
            onWillMove();
    }

    int layouts = 0;
    std::optional<x11::PixelRect> expected;
    std::function<void()> onWillMove;
    std::function<void()> onMove;

protected:
    void resized() override {}
    void moved() override {
        if (onMove)
            onMove();
    }

private:
    x11::MenuBar& bar_;
};

class BarLayout : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
        startBar({"right", "middle", "left"});
        for (auto [item, name] : {std::pair(&right_, "right"), {&middle_, "middle"}, {&left_, "left"}})
            *item = std::make_unique<WatchedItem>(*bar_, name);
        ASSERT_TRUE(turnUntil([&] { return right_->place() && middle_->place() && left_->place(); }));
    }
    void TearDown() override {
        for (auto* item : {&right_, &middle_, &left_})
            item->reset();
        BarSession::TearDown();
    }

    /// True where somebody else's question is answered at once.
    bool isServerFree() const {
        // The server may read what others ask before what we have sent.
        connection_->sync();
        const auto question = xcb_get_input_focus(x().raw());
        xcb_flush(x().raw());
        constexpr int limit = 300;
        pollfd answer = {xcb_get_file_descriptor(x().raw()), POLLIN, 0};
        const bool isAnswered = poll(&answer, 1, limit) > 0;
        xcb_discard_reply(x().raw(), question.sequence);
        return isAnswered;
    }

    std::unique_ptr<WatchedItem> right_;
    std::unique_ptr<WatchedItem> middle_;
    std::unique_ptr<WatchedItem> left_;
};

TEST_F(BarLayout, IsOneStepForWhichEverybodyWaitsAndForNothingElse) {
    int drawn = 0;
    int moved = 0;
    for (auto* item : {middle_.get(), left_.get()}) {
        item->onWillMove = [&] {
            EXPECT_TRUE(isServerFree());
            EXPECT_EQ(moved, 0) << "nothing has moved before all are drawn";
            ++drawn;
        };
        item->onMove = [&, item] {
            EXPECT_FALSE(isServerFree());
            EXPECT_EQ(item->place(), item->expected);
            ++moved;
        };
    }
    right_.reset();
    bar_->layOutIfNeeded();
    EXPECT_EQ(drawn, 2);
    EXPECT_EQ(moved, 2);
    EXPECT_TRUE(isServerFree());
}

TEST_F(BarLayout, FollowsADragOnceATurnButTheDraggedItemAtOnce) {
    const auto place = *right_->place();
    const auto neighbour = *middle_->place();
    bar_->take(*right_);
    const int before = right_->layouts;
    for (int step = 1; step <= 40; ++step) {
        bar_->dragTo(place.x - step);
        EXPECT_EQ(right_->place()->x, place.x - step);
    }
    EXPECT_EQ(right_->layouts, before);
    EXPECT_EQ(*middle_->place(), neighbour);
    loop_.turn();
    EXPECT_EQ(right_->layouts, before + 1);
    EXPECT_EQ(right_->place()->x, place.x - 40);
    EXPECT_EQ(*middle_->place(), place) << "has made room";
    bar_->drop();
    bar_->layOutIfNeeded();
    EXPECT_EQ(*right_->place(), neighbour);
}

/// The portal of the desktop may tell of another preference without end.
TEST_F(BarLayout, FollowsOneLookAfterAnotherAtAPace) {
    int changes = 0;
    const auto listener = settings_->onChange([&] { ++changes; });
    constexpr double pause = 0.1;
    const double begin = loop_.now();
    for (int round = 0; round < 100; ++round) {
        settings_->setPrefersDark(round % 2 == 0);
        loop_.turn();
    }
    const double time = loop_.now() - begin;
    EXPECT_GE(changes, 1) << "the first one at once";
    EXPECT_LE(changes, 1 + time / pause);
    settings_->setPrefersDark(true);
    EXPECT_TRUE(turnUntil([&] { return settings_->appearance().dark; }));
    settings_->setPrefersDark(false);
    EXPECT_TRUE(turnUntil([&] { return !settings_->appearance().dark; })) << "the last one counts";
}

}  // namespace

}  // namespace velmo::desktop
