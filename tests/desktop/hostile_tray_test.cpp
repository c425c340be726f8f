#include "beside.h"
#include "hostile_tray_session.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <limits>
#include <thread>

namespace velmo::desktop {

namespace {

class HostileTray : public HostileTraySession {};

TEST_F(HostileTray, ProgramsThatDieBeforeDuringAndAfterDocking) {
    constexpr int enough = 300;
    std::atomic<int> deaths = 0;
    {
        const Beside dying(Beside::Times::untilTheEnd, [&] {
            TrayClient program(display());
            const auto window = program.makeIcon("dying", TrayClient::Look(deaths % 4));
            if (deaths % 3 == 0)
                program.destroy(window);
            program.dock(window);
            if (deaths % 3 == 1)
                eventually([&] { return program.x().parent(window) != program.x().root(); },
                           milliseconds(2000));
            ++deaths;
        });
        expectResponsive("programs die", [&] { return deaths >= enough; });
    }
    expectGoodIconAlone();
}

TEST_F(HostileTray, WindowsOfOddSizesAndPlacesHaveThoseOfAnIcon) {
    for (const bool isUnmanaged : {false, true}) {
        for (const std::uint32_t size : {1U, 4000U}) {
            TrayClient program(display());
            const auto window = program.makeIcon("odd");
            if (isUnmanaged)
                setOverrideRedirect(program.x(), window);
            configure(program.x(), window, size, size);
            program.dock(window);
            const Area place = {place_.x - 30, place_.y, place_.width, place_.height};
            EXPECT_TRUE(eventually([&] { return isDocked(window) && x().area(window) == place; })) << size;
            xcb_reparent_window(program.x().raw(), window, x().parent(window), 400, 300);
            program.x().exists(window);
            EXPECT_TRUE(eventually([&] { return isDocked(window) && x().area(window) == place; })) << size;
            configure(program.x(), window, size, 5001 - size);
            const std::uint32_t values[] = {static_cast<std::uint32_t>(-40), 17, 9};
            xcb_configure_window(program.x().raw(), window,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                                 values);
            program.x().exists(window);
            EXPECT_TRUE(eventually([&] { return x().area(window) == place; })) << size;
            expectResponsive("an icon has an odd size");
        }
    }
    expectGoodIconAlone();
}

TEST_F(HostileTray, WindowsThatAreNeverMappedOrUnmapThemselves) {
    {
        TrayClient program(display());
        const auto window = program.makeIcon("shy");
        program.dock(window);
        EXPECT_TRUE(eventually([&] { return isDocked(window); })) << "the tray maps it";
        xcb_unmap_window(program.x().raw(), window);
        ASSERT_FALSE(program.x().isViewable(window));
        xcb_map_window(program.x().raw(), window);
        program.x().exists(window);
        EXPECT_TRUE(eventually([&] { return isDocked(window); })) << "when it asks for it";
        program.setEmbeddingFlags(window, 0);
        EXPECT_TRUE(eventually([&] { return !x().isViewable(window); }));
        xcb_map_window(program.x().raw(), window);
        program.x().exists(window);
        EXPECT_TRUE(stays([&] { return !x().isViewable(window); }, milliseconds(400)))
            << "it has said that it is not to be seen";
    }
    expectGoodIconAlone();
}

TEST_F(HostileTray, NonsenseSentToTheTray) {
    const auto send = [&](const TrayClient& program, std::uint8_t format, xcb_atom_t type,
                          std::uint32_t opcode, xcb_window_t window) {
        const auto owner = x().selectionOwner("_NET_SYSTEM_TRAY_S0");
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = format;
        message.window = owner;
        message.type = type;
        message.data.data32[1] = opcode;
        message.data.data32[2] = window;
        message.data.data32[3] = std::numeric_limits<std::uint32_t>::max();
        xcb_send_event(program.x().raw(), 0, owner, 0, reinterpret_cast<const char*>(&message));
    };
    {
        TrayClient program(display());
        const auto twice = program.makeIcon("twice");
        for (int count = 0; count < 50; ++count)
            program.dock(twice);
        EXPECT_TRUE(eventually([&] { return isDocked(twice); }));
        EXPECT_EQ(itemCount(), 2U);
        const xcb_window_t inputOnly = xcb_generate_id(program.x().raw());
        xcb_create_window(program.x().raw(), 0, inputOnly, x().root(), 0, 0, 20, 20, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto opcodeType = x().atom("_NET_SYSTEM_TRAY_OPCODE");
        const auto windows = {xcb_window_t{0},
                              x().root(),
                              bar(),
                              toggle(),
                              divider(),
                              inputOnly,
                              x().parent(twice),
                              icon_,
                              twice,
                              xcb_window_t{0xffffffff},
                              xcb_window_t{0xdeadbeef}};
        const Beside nonsense(Beside::Times::untilTheEnd, [&] {
            for (const auto window : windows) {
                for (const std::uint8_t format : {8, 16, 32, 0, 99})
                    send(program, format, opcodeType, 0, format == 32 ? window : twice);
                for (const std::uint32_t opcode : {1U, 2U, 3U, 0xffffffffU})
                    send(program, 32, opcodeType, opcode, window);
                send(program, 32, x().atom("_NET_SYSTEM_TRAY_MESSAGE_DATA"), 0, window);
                send(program, 32, x().atom("_XEMBED"), 0, window);
            }
            program.x().exists(twice);
            std::this_thread::sleep_for(milliseconds(1));
        });
        expectResponsive("nonsense is sent");
        EXPECT_EQ(itemCount(), 2U);
    }
    expectGoodIconAlone();
}

TEST_F(HostileTray, LiesInProperties) {
    const std::string huge(200000, '\xff');
    {
        std::vector<std::unique_ptr<TrayClient>> programs;
        const auto liar = [&](const std::string& name, const std::string& type, std::uint8_t format,
                              const std::string& bytes) {
            auto& program = *programs.emplace_back(std::make_unique<TrayClient>(display()));
            const auto window = program.makeIcon("liar");
            setProperty(program.x(), window, name, type, format, bytes);
            program.dock(window);
            EXPECT_TRUE(eventually([&] { return isDocked(window); })) << name << ' ' << type;
            setProperty(program.x(), window, name, type, format, bytes);
            program.x().exists(window);
        };
        liar("WM_CLASS", "STRING", 8, huge);
        liar("WM_CLASS", "STRING", 8, std::string(64, '\0'));
        liar("WM_CLASS", "CARDINAL", 32, std::string(64, '\1'));
        liar("WM_CLASS", "STRING", 8, std::string("good\0Icon\0", 10));
        liar("WM_CLASS", "STRING", 8, std::string("Velmo\0Divider\0", 14));
        liar("_XEMBED_INFO", "STRING", 8, "1");
        liar("_XEMBED_INFO", "_XEMBED_INFO", 16, std::string(8, '\1'));
        liar("_XEMBED_INFO", "_XEMBED_INFO", 32, {});
        liar("_XEMBED_INFO", "_XEMBED_INFO", 32, std::string(60000, '\xff'));
        liar("_NET_WM_NAME", "UTF8_STRING", 8, huge);
        liar("_NET_WM_NAME", "UTF8_STRING", 8, "\xc3\x28\xf0\x9f");
        liar("WM_NAME", "STRING", 8, huge);
        liar("_NET_WM_PID", "CARDINAL", 32, std::string(4, '\xff'));
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "Velmo.Toggle");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "good.Icon");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#99999999999999999999999");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#18446744073709551615");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#" + std::string(60000, '0') + "900");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#0901");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#902 ");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#1001");
        liar("_VELMO_ITEM", "UTF8_STRING", 8, "liar.Icon#1000");
        EXPECT_EQ(x().area(icon_), place_);
        expectResponsive("liars are there");
    }
    // The last of them.
    ASSERT_TRUE(eventually([&] { return knowsPlaceOf("liar.Icon#1000"); }));
    const auto order = savedOrder();
    for (const auto* name : {"Velmo.Toggle", "good.Icon", "Velmo.Divider"})
        EXPECT_EQ(std::count(order.begin(), order.end(), name), 1) << name;
    EXPECT_EQ(order.front(), "Velmo.Toggle");
    EXPECT_EQ(std::count(order.begin(), order.end(), "liar.Icon#1000"), 1) << "so many there may be";
    for (const auto& identity : order) {
        EXPECT_LE(identity.size(), 128U);
        for (const auto* number : {"900", "901", "902", "1001"})
            EXPECT_EQ(identity.find(number), std::string::npos) << identity;
    }
    expectGoodIconAlone();
}

TEST_F(HostileTray, AnotherTrayThatTakesTheIconsAndGivesThemBackInEveryWay) {
    const auto owner = [&] { return x().selectionOwner("_NET_SYSTEM_TRAY_S0"); };
    const auto tray = x().atom("_NET_SYSTEM_TRAY_S0");
    for (int round = 0; round < 12; ++round) {
        const auto before = owner();
        auto rival = std::make_unique<XObserver>(display());
        const xcb_window_t window = xcb_generate_id(rival->raw());
        xcb_create_window(rival->raw(), XCB_COPY_FROM_PARENT, window, rival->root(), 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(rival->raw(), window, tray, XCB_CURRENT_TIME);
        ASSERT_EQ(rival->selectionOwner("_NET_SYSTEM_TRAY_S0"), window);
        // Half of the time it has them for a moment only.
        if (round % 2 == 0) {
            ASSERT_TRUE(eventually([&] { return itemCount() == 0; }));
            ASSERT_TRUE(eventually([&] { return x().parent(icon_) == x().root(); }));
            EXPECT_FALSE(x().isViewable(icon_));
            expectResponsive("another program is the tray");
        }
        if (round % 3 == 0)
            xcb_destroy_window(rival->raw(), window);
        else if (round % 3 == 1)
            xcb_set_selection_owner(rival->raw(), XCB_WINDOW_NONE, tray, XCB_CURRENT_TIME);
        else
            rival.reset();
        if (rival)
            rival->exists(window);
        ASSERT_TRUE(eventually([&] { return owner() != XCB_WINDOW_NONE && owner() != window; }))
            << "way " << round % 3;
        ASSERT_NE(owner(), before);
        ASSERT_TRUE(eventually([&] { return x().area(icon_) == place_ && isGoodIconSeen(); }));
    }
    expectGoodIconAlone();
}

}  // namespace

}  // namespace velmo::desktop
