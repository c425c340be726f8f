#include "icons_session.h"
#include "request_tap.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace velmo::desktop {

namespace {

/// What Velmo asks the server for while it has the server for itself.
class OneStep : public IconsSession {
protected:
    void SetUp() override {
        IconsSession::SetUp();
        // No descriptors come through the tap, by which memory is shared.
        startServer("1280x720x24", {"-extension", "MIT-SHM"});
        tap_ = std::make_unique<RequestTap>(environment_.at("DISPLAY"));
        writeDefaults({{"autoRehide", false},
                       {"hideOnClickOutside", false},
                       {"statusItemOrder", {"Velmo.Toggle", "Velmo.Divider", "hidden.Icon"}}});
        const auto display = std::exchange(environment_["DISPLAY"], tap_->display());
        startVelmo();
        environment_["DISPLAY"] = display;
        icon_ = x().parent(dockIcon("hidden"));
        ASSERT_TRUE(eventually([&] { return isUnseen("hidden"); }));
        ASSERT_TRUE(comesToRest());
    }
    void TearDown() override {
        IconsSession::TearDown();
        tap_.reset();
    }

    /// What is asked from the click until all is done.
    std::vector<RequestTap::Request> requestsOfAClick() {
        const auto place = *x().area(toggle());
        movePointer(place.midX(), place.midY());
        EXPECT_TRUE(comesToRest());
        tap_->note();
        const bool wasUnseen = isUnseen("hidden");
        xdotool({"click", "1"});
        EXPECT_TRUE(eventually([&] { return isUnseen("hidden") != wasUnseen; }));
        EXPECT_TRUE(comesToRest());
        return tap_->noted();
    }

    std::unique_ptr<RequestTap> tap_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

TEST_F(OneStep, HasThePicturesOfOurOwnItemsInItAndNothingToDraw) {
    for (int round = 0; round < 4; ++round) {
        const auto requests = requestsOfAClick();
        const auto move = std::find_if(requests.begin(), requests.end(), [&](const auto& request) {
            return request.opcode == XCB_CONFIGURE_WINDOW && request.subject == icon_;
        });
        ASSERT_NE(move, requests.end());
        ASSERT_NE(move->grab, 0);
        const auto inTheStep = [&](std::uint8_t opcode, xcb_window_t window) {
            return std::count_if(requests.begin(), requests.end(), [&](const auto& request) {
                return request.opcode == opcode && request.subject == window && request.grab == move->grab;
            });
        };
        EXPECT_EQ(inTheStep(XCB_CONFIGURE_WINDOW, divider()), 1);
        for (const auto window : {divider(), toggle()}) {
            EXPECT_EQ(inTheStep(XCB_CHANGE_WINDOW_ATTRIBUTES, window), 1);
            EXPECT_EQ(inTheStep(XCB_CLEAR_AREA, window), 1);
        }
        // Backgrounds change and windows move; nothing is made, drawn or asked.
        const std::set<std::uint8_t> quick = {XCB_GRAB_SERVER, XCB_CONFIGURE_WINDOW,
                                              XCB_CHANGE_WINDOW_ATTRIBUTES, XCB_CLEAR_AREA};
        for (const auto& request : requests)
            EXPECT_TRUE(request.grab != move->grab || quick.contains(request.opcode)) << int{request.opcode};
    }
}

}  // namespace

}  // namespace velmo::desktop
