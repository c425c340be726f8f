#include "beside.h"
#include "hostile_session.h"

#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

class HostileItems : public HostileSession {
protected:
    /// Something is drawn in the middle row of the item.
    bool hasPicture(xcb_window_t item) const {
        const auto place = x().area(item).value_or(Area{});
        const auto background = x().pixel(place.x + 1, place.midY());
        for (int column = 2; column < place.width - 2; ++column) {
            if (x().pixel(place.x + column, place.midY()) != background)
                return true;
        }
        return false;
    }
};

TEST_F(HostileItems, EnormousPixmapsThatChangeWithoutEnd) {
    // The largest that a message can carry.
    constexpr int side = 4095;
    for (int round = 0; round < 3; ++round) {
        auto program = programWithItem("Enormous");
        const auto place = *x().area(untilShown("Enormous"));
        program->setProperty(itemPath, "IconPixmap",
                             BusProgram::whitePixmap(side, side, std::size_t{side} * side * 4));
        const Beside changes(Beside::Times::untilTheEnd, [&] {
            program->emit(itemPath, itemInterface, "NewIcon");
            std::this_thread::sleep_for(milliseconds(5));
        });
        expectResponsive("64 MB of pixels arrive",
                         [&] { return x().pixel(place.midX(), place.midY()) == 0xffffff; });
    }
    expectNothingLeft();
}

TEST_F(HostileItems, FloodsOfSignals) {
    auto program = programWithItem("Flood");
    untilShown("Flood");
    const int asked = program->callsOf("GetAll");
    {
        const Beside flood(Beside::Times::untilTheEnd, [&] {
            for (int count = 0; count < 500; ++count)
                program->emit(itemPath, itemInterface, "NewIcon");
            std::this_thread::sleep_for(milliseconds(5));
        });
        expectResponsive("signals flood in", [&] { return program->callsOf("GetAll") >= asked + 5; });
    }
    program.reset();
    expectNothingLeft();
}

TEST_F(HostileItems, WrongTypesAndPixmapsThatLie) {
    const auto good = programWithItem("Good");
    untilShown("Good");
    noteWhatIsHeld();
    auto program = std::make_unique<BusProgram>(busAddress());
    const std::vector<std::pair<std::string, BusProgram::Append>> lies = {
        {"Status", [](auto* message) { return sd_bus_message_append(message, "v", "d", 1.5); }},
        {"IconName", [](auto* message) { return sd_bus_message_append(message, "v", "(iau)", 7, 1, 2); }},
        {"IconPixmap", [](auto* message) { return sd_bus_message_append(message, "v", "s", "picture"); }},
        {"ToolTip", [](auto* message) { return sd_bus_message_append(message, "v", "aas", 0); }},
        {"Menu", [](auto* message) { return sd_bus_message_append(message, "v", "a{sv}", 0); }},
        {"ItemIsMenu", [](auto* message) { return sd_bus_message_append(message, "v", "v", "b", 1); }},
        {"IconPixmap", BusProgram::whitePixmap(20, 20, 0)},
        {"IconPixmap", BusProgram::whitePixmap(20, 20, 1599)},
        {"IconPixmap", BusProgram::whitePixmap(-20, -20, 1600)},
        {"IconPixmap", BusProgram::whitePixmap(65536, 65536, 1600)},
        {"IconPixmap", BusProgram::whitePixmap(1 << 30, 4, 16)},
        {"OverlayIconPixmap", BusProgram::whitePixmap(20, 20, 1601)},
    };
    const auto title = [](std::size_t index) { return "Lie " + std::to_string(index); };
    for (std::size_t index = 0; index < lies.size(); ++index) {
        const std::string place = "/Item" + std::to_string(index);
        program->addItem(place, "lie");
        program->setText(place, "Title", title(index));
        program->setProperty(place, lies[index].first, lies[index].second);
    }
    {
        const Beside coming(Beside::Times::once, [&] {
            for (std::size_t index = 0; index < lies.size(); ++index)
                program->registerItem("/Item" + std::to_string(index));
        });
        expectResponsive("liars come", [&] { return itemCount() == 1 + lies.size(); });
    }
    for (std::size_t index = 0; index < lies.size(); ++index)
        EXPECT_TRUE(hasPicture(untilShown(title(index)))) << index;
    {
        const int asked = program->callsOf("GetAll");
        const Beside changes(Beside::Times::untilTheEnd, [&] {
            for (std::size_t index = 0; index < lies.size(); ++index)
                program->emit("/Item" + std::to_string(index), itemInterface, "NewIcon");
            std::this_thread::sleep_for(milliseconds(5));
        });
        expectResponsive("liars change", [&] { return program->callsOf("GetAll") >= asked + 100; });
    }
    click(itemTitled("Good"));
    EXPECT_TRUE(eventually([&] { return good->callsOf("Activate") == 1; }));
    program.reset();
    expectNothingLeft(1);
}

TEST_F(HostileItems, RepliesThatNeverCome) {
    constexpr int count = 200;
    for (int round = 0; round < 6; ++round) {
        auto program = std::make_unique<BusProgram>(busAddress());
        for (const auto* member : {"GetAll", "GetLayout", "AboutToShow", "Activate", "Event"})
            program->keepSilentOn(member);
        {
            const Beside coming(Beside::Times::once, [&] {
                for (int index = 0; index < count; ++index) {
                    program->addItem("/Item" + std::to_string(index), "silent");
                    program->registerItem("/Item" + std::to_string(index));
                }
            });
            expectResponsive("nobody answers", [&] { return program->callsOf("GetAll") >= count; });
        }
        EXPECT_EQ(itemCount(), 0U) << "of whom nothing is known, nothing is shown";
        program.reset();
        xdotool({"sleep", "0.2"});
        if (round == 0)
            noteWhatIsHeld();
    }
    expectNothingLeft();
}

TEST_F(HostileItems, FiveHundredAtOnceThatLeaveAtOnce) {
    constexpr int count = 500;
    // What an allocator keeps of the first time serves the others.
    for (int round = 0; round < 6; ++round) {
        auto program = std::make_unique<BusProgram>(busAddress());
        // Half of the rounds have items of one name.
        for (int index = 0; index < count; ++index)
            program->addItem("/Item" + std::to_string(index),
                             round % 2 == 0 ? "item" + std::to_string(index) : "item");
        auto start = std::chrono::steady_clock::now();
        {
            const Beside coming(Beside::Times::once, [&] {
                for (int index = 0; index < count; ++index)
                    program->registerItem("/Item" + std::to_string(index));
            });
            expectResponsive("500 items come", [&] { return itemCount() == count; });
        }
        std::printf("500 items have come after %.0f ms\n", millisecondsSince(start));
        start = std::chrono::steady_clock::now();
        {
            const Beside leaving(Beside::Times::once, [&] { program.reset(); });
            expectResponsive("500 items leave", [&] { return itemCount() == 0; });
        }
        std::printf("500 items have left after %.0f ms\n", millisecondsSince(start));
        if (round < 2)
            noteWhatIsHeld();
    }
    expectNothingLeft();
}

}  // namespace

}  // namespace velmo::desktop
