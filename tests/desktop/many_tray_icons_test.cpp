#include "desktop_session.h"
#include "film.h"
#include "tray_client.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

namespace velmo::desktop {

namespace {

/// More icons than anybody has.
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
    bool isWhole(xcb_window_t icon) const {
        const auto area = x().area(icon);
        return area && area->x >= 0 && isOnScreen(icon);
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
    ASSERT_TRUE(eventually([&] { return savedOrder().size() >= icons_.size() + 2; })) << "places are known";
    velmo().signal(SIGKILL);
    velmo().wait(milliseconds(5000));
    for (const auto icon : icons_)
        ASSERT_TRUE(eventually([&] { return x().parent(icon) == x().root(); }));
    startVelmo();
    ASSERT_TRUE(eventually([&] { return areShown(); }, milliseconds(20000)));
    EXPECT_EQ(fromRightToLeft(), order);
}

TEST_F(ManyTrayIcons, StandCloserWhereTheyAreTooManyAndAreAllReached) {
    startServer();
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    startVelmo();
    client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    const auto dockUntil = [&](std::size_t enough) {
        for (auto number = icons_.size(); number < enough; ++number) {
            icons_.push_back(
                client_->makeIcon("icon" + std::to_string(number), TrayClient::Look(number % 4), 0x204060));
            client_->dock(icons_.back());
        }
    };
    const auto standAt = [&](int distance) {
        const auto order = fromRightToLeft();
        return std::all_of(order.begin() + 1, order.end(), [&](const auto& icon) {
            return isWhole(icon) && x().area(*(&icon - 1))->x - x().area(icon)->x == distance;
        });
    };
    const auto place = x().area(toggle());
    dockUntil(41);
    EXPECT_TRUE(eventually([&] { return standAt(30); }));
    dockUntil(42);
    EXPECT_TRUE(eventually([&] { return standAt(28); }));
    std::this_thread::sleep_for(milliseconds(300));
    const int exposures = client_->exposures();
    dockUntil(61);
    EXPECT_TRUE(eventually([&] { return standAt(20); })) << "side by side";
    dockUntil(103);
    EXPECT_TRUE(eventually([&] { return standAt(12); }));
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_EQ(client_->exposures() - exposures, 103 - 42) << "who is there already is not drawn anew";
    EXPECT_EQ(x().area(toggle()), place);
    for (const auto icon : icons_) {
        const auto area = *x().area(icon);
        EXPECT_NE(x().pixel(area.midX(), area.midY()), lightBar);
    }
    while (icons_.size() > 41) {
        client_->destroy(icons_.back());
        icons_.pop_back();
    }
    EXPECT_TRUE(eventually([&] { return standAt(30); }));
}

TEST_F(ManyTrayIcons, StandCloserOnlyWhileTheyAreRevealed) {
    startServer();
    std::vector<std::string> order = {"clock.Icon", "Velmo.Toggle", "Velmo.Divider"};
    for (int number = 0; number < 60; ++number)
        order.push_back("icon" + std::to_string(number) + ".Icon");
    order.insert(order.begin() + 2, "seen.Icon");
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}, {"statusItemOrder", order}});
    startVelmo();
    client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    const auto dock = [&](const std::string& name) {
        const auto icon = client_->makeIcon(name, TrayClient::Look::translucent, 0x204060);
        client_->dock(icon);
        return icon;
    };
    const auto rightmost = dock("clock");
    const auto seen = dock("seen");
    for (int number = 0; number < 60; ++number)
        icons_.push_back(dock("icon" + std::to_string(number)));
    const auto seenWidth = [&] { return x().area(x().parent(seen)).value_or(Area{}).width; };
    ASSERT_TRUE(eventually([&] {
        return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isHidden(icon); }) &&
               isOnScreen(seen) && isOnScreen(rightmost);
    }));
    EXPECT_EQ(seenWidth(), 30);
    const auto places = std::tuple(x().area(toggle()), x().area(rightmost), x().area(seen));
    for (int round = 0; round < 2; ++round) {
        click(toggle());
        EXPECT_TRUE(eventually([&] {
            return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isWhole(icon); });
        }));
        EXPECT_EQ(x().area(x().parent(icons_.front()))->width, 18);
        EXPECT_EQ(seenWidth(), 30) << "what is always seen stays";
        EXPECT_EQ(std::tuple(x().area(toggle()), x().area(rightmost), x().area(seen)), places)
            << "where the next click goes";
        click(toggle());
        EXPECT_TRUE(eventually([&] {
            return std::all_of(icons_.begin(), icons_.end(), [&](auto icon) { return isHidden(icon); });
        }));
    }
}

TEST_F(ManyTrayIcons, BeyondTheRoomOfTheBarLieLeftOfTheScreenAndCostNoClick) {
    startServer();
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    startVelmo();
    dockAll();
    if (HasFatalFailure())
        return;
    const auto order = fromRightToLeft();
    const auto seen = std::count_if(order.begin(), order.end(), [&](auto icon) { return isWhole(icon); });
    EXPECT_EQ(seen, 103) << "as many as there is room for";
    EXPECT_TRUE(isOnScreen(toggle()));
    click(toggle());
    EXPECT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
    // The first of those that are too many comes in when another leaves.
    client_->destroy(order.front());
    std::erase(icons_, order.front());
    EXPECT_TRUE(eventually([&] { return isWhole(order[103]); }));
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
    // Icons, and the divider with its own picture.
    const Area left = {0, 13, x().area(toggle())->x, 1};
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
        ASSERT_TRUE(comesToRest());
        Film film(environment_.at("DISPLAY"), left);
        toggleTo(true);
        EXPECT_TRUE(comesToRest());
        const auto& frames = film.frames();
        EXPECT_EQ(frames.size(), 2U) << "no state in between, round " << round;
        EXPECT_EQ(frames.front(), hidden);
        EXPECT_NE(frames.back(), hidden);
        toggleTo(false);
    }
}

}  // namespace

}  // namespace velmo::desktop
