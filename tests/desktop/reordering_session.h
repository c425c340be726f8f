#pragma once

#include "icons_session.h"

namespace velmo::desktop {

/// Two icons that are shown, between the toggle and the divider, and two left of it, which are revealed.
class ReorderingSession : public IconsSession {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        startServer();
    }

    void start(const nlohmann::json& defaults = {{"autoRehide", false}}) {
        startWindowManager();
        writeDefaults(defaults);
        startVelmo();
        dockIcons({"one", "two", "three", "four"});
        hideIcon("four");
        hideIcon("three");
        movePointer(farLeft, 400);
    }
    void startRevealed(const nlohmann::json& defaults = {{"autoRehide", false}}) {
        start(defaults);
        reveal(revealed);
        before_ = items();
    }
    void reveal(const Names& expected) const {
        click(toggle());
        ASSERT_TRUE(eventually([&] { return !dividerIsExpanded(); }));
        ASSERT_EQ(names(), expected);
        // Away from the toggle, whose tooltip would follow. Nothing is hidden while the pointer is in the
        // bar.
        movePointer(farLeft, barMiddle);
    }
    bool isAsBefore() const { return items() == before_; }
    void expectStaysAsBefore() const {
        EXPECT_TRUE(eventually([&] { return isAsBefore(); })) << testing::PrintToString(names());
        EXPECT_TRUE(stays([&] { return isAsBefore(); }, moment)) << testing::PrintToString(names());
    }
    bool become(const Names& expected) const {
        return eventually([&] { return names() == expected && areLaidOut(screen); });
    }

    const Names revealed = {"Toggle", "one", "two", "Divider", "three", "four"};
    const std::vector<std::string> written = {"Velmo.Toggle",  "one.Icon",   "two.Icon",
                                              "Velmo.Divider", "three.Icon", "four.Icon"};
    const Area screen = {0, 0, 1280, 720};
    std::vector<Placed> before_;
};

}  // namespace velmo::desktop
