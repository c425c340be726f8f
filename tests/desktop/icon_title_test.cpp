#include "bar_session.h"
#include "tray_client.h"

#include <algorithm>
#include <chrono>

namespace velmo::desktop {

namespace {

/// What is shown of the titles that X11 programs give their icons.
class IconTitle : public BarSession {
protected:
    void SetUp() override {
        DesktopSession::SetUp();
        startServer();
        startBar();
        const std::vector<std::uint32_t> pixels(std::size_t{iconSide} * iconSide, 0xff00ff00);
        icon_ = makeIcon(24, pixels);
    }

    void setTitle(xcb_atom_t name, xcb_atom_t type, const std::string& title) const {
        xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, icon_, name, type, 8,
                            static_cast<std::uint32_t>(title.size()), title.data());
        xcb_flush(x().raw());
    }

    std::string title() const { return itemOf(icon_)->describe().name.value_or(""); }

    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

TEST_F(IconTitle, IsReadInBothOfItsEncodings) {
    setTitle(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Ger\xe4t \xfc");
    dock(icon_);
    EXPECT_EQ(title(), "Gerät ü");
    setTitle(x().atom("_NET_WM_NAME"), x().atom("UTF8_STRING"), "Gerät 2 €");
    EXPECT_TRUE(turnUntil([&] { return title() == "Gerät 2 €"; }));
}

TEST_F(IconTitle, IsNoLongerThanAnyoneReads) {
    setTitle(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, std::string(60000, '\xe4'));
    dock(icon_);
    std::string expected;
    while (expected.size() < 500)
        expected += "ä";
    EXPECT_EQ(title(), expected);
}

TEST_F(IconTitle, IsReadNoFartherThanItIsKept) {
    setTitle(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, std::string(60000, 'a'));
    setTitle(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string(60000, 'a'));
    setTitle(x().atom("_VELMO_ITEM"), x().atom("UTF8_STRING"), std::string(60000, 'a'));
    const auto before = xcb_total_read(connection_->raw());
    dock(icon_);
    EXPECT_LT(xcb_total_read(connection_->raw()) - before, 20000U);
}

TEST_F(IconTitle, OfManyIconsThatChangeItWithoutEndIsReadAtLeisure) {
    std::vector<xcb_window_t> icons;
    for (int count = 0; count < 100; ++count) {
        icons.push_back(makeIcon(24, std::vector<std::uint32_t>(std::size_t{iconSide} * iconSide, 0)));
        sendToTray(x(), 0, icons.back());
    }
    ASSERT_TRUE(turnUntil([&] {
        return std::all_of(icons.begin(), icons.end(), [&](auto icon) { return x().isViewable(icon); });
    }));
    turnUntil([] { return false; }, milliseconds(300));
    const auto requests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    const auto before = requests();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    int round = 0;
    while (std::chrono::steady_clock::now() < end) {
        ++round;
        for (const auto icon : icons)
            xcb_change_property(x().raw(), XCB_PROP_MODE_REPLACE, icon, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                1, round % 2 ? "a" : "b");
        xcb_flush(x().raw());
        turnUntil([] { return false; }, milliseconds(20));
    }
    ASSERT_GT(round, 10);
    EXPECT_LT(requests() - before, 1000U) << "two for each that is read";
    icon_ = icons.back();
    setTitle(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "last");
    const auto isLast = [&] {
        for (const auto* item : bar_->items()) {
            if (item->content() && item->content()->window == icon_)
                return item->describe().name == "last";
        }
        return false;
    };
    EXPECT_TRUE(turnUntil(isLast)) << "nobody is forgotten";
}

}  // namespace

}  // namespace velmo::desktop
