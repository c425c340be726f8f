#include "bar_session.h"

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

}  // namespace

}  // namespace velmo::desktop
