#include "session_bus_desktop.h"

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr const char* path = "/StatusNotifierItem";
constexpr const char* interface = "org.kde.StatusNotifierItem";
/// Milliseconds from a click on the toggle to its effect.
constexpr double responsive = 100;
constexpr int clicks = 7;
/// Kilobytes that Velmo may hold more after all is over: what allocators keep.
constexpr long memorySlack = 3000;

class HostileItems : public SessionBusDesktop {
protected:
    void SetUp() override {
        SessionBusDesktop::SetUp();
        const auto program = programWithItem("Harmless");
        untilShown("Harmless");
        // What is needed for one item is needed for many.
        toggleLatency(2);
        waitForToolkit();
        noteWhatIsHeld();
    }

    void noteWhatIsHeld() {
        memoryBefore_ = memory();
        filesBefore_ = openFiles();
    }

    void expectResponsive(const char* what) {
        const double latency = toggleLatency(clicks);
        std::printf("toggle while %s: %.1f ms\n", what, latency);
        EXPECT_LT(latency, responsive) << what;
    }

    void expectNothingLeft() {
        ASSERT_TRUE(eventually([&] { return x().children(bar()).size() == 3; }, milliseconds(20000)));
        EXPECT_TRUE(eventually([&] { return memory() < memoryBefore_ + memorySlack; }, milliseconds(2000)))
            << memory() << " against " << memoryBefore_;
        EXPECT_TRUE(eventually([&] { return openFiles() <= filesBefore_; }, milliseconds(10000)));
    }

    /// The pointer on the toggle has it loaded.
    void waitForToolkit() {
        const std::string maps = "/proc/" + std::to_string(velmo().id()) + "/maps";
        ASSERT_TRUE(eventually([&] {
            std::ifstream file(maps);
            return std::string(std::istreambuf_iterator<char>(file), {}).find("velmo-qt.so") !=
                   std::string::npos;
        }));
        xdotool({"sleep", "0.5"});
    }

    void setMenu(BusProgram& program, const BusProgram::MenuEntry& root) {
        program.setProperty(path, "Menu",
                            [](auto* message) { return sd_bus_message_append(message, "v", "o", "/Menu"); });
        program.setMenu("/Menu", root);
        const int asked = program.callsOf("GetAll");
        program.emit(path, interface, "NewMenu");
        ASSERT_TRUE(eventually([&] { return program.callsOf("GetAll") > asked; }));
        xdotool({"sleep", "0.1"});
    }

private:
    long memoryBefore_ = 0;
    long filesBefore_ = 0;
};

TEST_F(HostileItems, EnormousPixmapsThatChangeWithoutEnd) {
    auto program = programWithItem("Enormous");
    untilShown("Enormous");
    // The largest that a message can carry.
    constexpr int side = 4095;
    program->setProperty(path, "IconPixmap", [](sd_bus_message* message) {
        void* space = nullptr;
        sd_bus_message_open_container(message, 'v', "a(iiay)");
        sd_bus_message_open_container(message, 'a', "(iiay)");
        sd_bus_message_open_container(message, 'r', "iiay");
        sd_bus_message_append(message, "ii", side, side);
        sd_bus_message_append_array_space(message, 'y', std::size_t{side} * side * 4, &space);
        sd_bus_message_close_container(message);
        sd_bus_message_close_container(message);
        return sd_bus_message_close_container(message);
    });
    for (int count = 0; count < 20; ++count)
        program->emit(path, interface, "NewIcon");
    expectResponsive("64 MB of pixels arrive");
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileItems, FloodsOfSignals) {
    auto program = programWithItem("Flood");
    untilShown("Flood");
    std::atomic<bool> ending = false;
    std::thread flood([&] {
        while (!ending) {
            for (int count = 0; count < 500; ++count)
                program->emit(path, interface, "NewIcon");
            std::this_thread::sleep_for(milliseconds(5));
        }
    });
    expectResponsive("signals flood in");
    ending = true;
    flood.join();
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileItems, RepliesThatNeverCome) {
    auto program = std::make_unique<BusProgram>(busAddress());
    for (const auto* member : {"GetAll", "GetLayout", "AboutToShow", "Activate", "Event"})
        program->keepSilentOn(member);
    for (int index = 0; index < 200; ++index) {
        program->addItem("/Item" + std::to_string(index), "silent");
        program->registerItem("/Item" + std::to_string(index));
    }
    expectResponsive("nobody answers");
    EXPECT_EQ(x().children(bar()).size(), 3U) << "of whom nothing is known, nothing is shown";
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileItems, AMenuThatNeverComes) {
    auto program = programWithItem("Silent");
    const auto icon = untilShown("Silent");
    setMenu(*program, {0, {}, {}});
    program->keepSilentOn("GetLayout");
    click(icon, 3);
    expectResponsive("a menu does not come");
    EXPECT_TRUE(stays([&] { return !openMenu(); }, milliseconds(500)));
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileItems, AMenuOfTenThousandEntriesOpensAndTheBarGoesOn) {
    auto program = programWithItem("Long");
    const auto icon = untilShown("Long");
    BusProgram::MenuEntry root;
    for (std::int32_t id = 1; id <= 10000; ++id)
        root.children.push_back({id, {{"label", "Entry " + std::to_string(id)}}, {}});
    setMenu(*program, root);
    const auto start = std::chrono::steady_clock::now();
    openMenuOf(icon, 3);
    const auto time = std::chrono::steady_clock::now() - start;
    std::printf("menu of 10000 entries: %.0f ms\n", std::chrono::duration<double, std::milli>(time).count());
    // It is asked for again and again while it is open.
    for (int count = 0; count < 200; ++count)
        program->emit("/Menu", "com.canonical.dbusmenu", "LayoutUpdated",
                      [](auto* message) { return sd_bus_message_append(message, "ui", 2, 0); });
    chooseByKeys({"Escape"});
    ASSERT_TRUE(eventually([&] { return !openMenu(); }));
    expectResponsive("a long menu has just closed");
}

TEST_F(HostileItems, AMenuThatContainsItselfOpens) {
    auto program = programWithItem("Loop");
    const auto icon = untilShown("Loop");
    BusProgram::MenuEntry inner{
        1, {{"label", std::string("Again")}, {"children-display", std::string("submenu")}}, {}};
    for (int depth = 0; depth < 6; ++depth) {
        auto outer = inner;
        outer.children = {inner};
        inner = outer;
    }
    setMenu(*program, {0, {}, {inner}});
    openMenuOf(icon, 3);
    chooseByKeys({"Down", "Right", "Right", "Escape", "Escape"});
    EXPECT_TRUE(eventually([&] { return !openMenu(); }));
    expectResponsive("a menu contains itself");
}

TEST_F(HostileItems, FiveHundredAtOnceThatLeaveAtOnce) {
    constexpr int count = 500;
    const auto millisecondsSince = [](auto start) {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    };
    // What an allocator keeps of the first time serves the second.
    for (int round = 0; round < 2; ++round) {
        noteWhatIsHeld();
        auto program = std::make_unique<BusProgram>(busAddress());
        for (int index = 0; index < count; ++index)
            program->addItem("/Item" + std::to_string(index), "item" + std::to_string(index));
        auto start = std::chrono::steady_clock::now();
        for (int index = 0; index < count; ++index)
            program->registerItem("/Item" + std::to_string(index));
        expectResponsive("500 items come");
        ASSERT_TRUE(eventually([&] { return x().children(bar()).size() == 3 + count; }, milliseconds(20000)));
        std::printf("500 items have come after %.0f ms\n", millisecondsSince(start));
        start = std::chrono::steady_clock::now();
        program.reset();
        expectResponsive("500 items leave");
        ASSERT_TRUE(eventually([&] { return x().children(bar()).size() == 3; }, milliseconds(20000)));
        std::printf("500 items have left after %.0f ms\n", millisecondsSince(start));
    }
    expectNothingLeft();
}

}  // namespace

}  // namespace velmo::desktop
