#include "linux/local_events.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo {

namespace {

constexpr EventMask presses = maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown);
constexpr EventMask keys = maskOf(EventType::keyDown);

class LocalEventsTest : public testing::Test {
protected:
    LocalEvents::Handler noting(const std::string& name,
                                EventDisposition disposition = EventDisposition::pass) {
        return [this, name, disposition](const Event&) {
            calls_ += name;
            return disposition;
        };
    }

    CurrentEvent currentEvent_;
    LocalEvents events_{currentEvent_};
    std::string calls_;
};

TEST_F(LocalEventsTest, MonitorsSeeWhatTheyAskedForInTheOrderOfTheirMaking) {
    const auto first = events_.addMonitor(presses | keys, noting("a"));
    const auto second = events_.addMonitor(keys, noting("b"));
    EXPECT_EQ(events_.deliver({EventType::leftMouseDown}), EventDisposition::pass);
    EXPECT_EQ(calls_, "a");
    EXPECT_EQ(events_.deliver({EventType::keyDown}), EventDisposition::pass);
    EXPECT_EQ(calls_, "aab");
    EXPECT_EQ(events_.deliver({EventType::scrollWheel}), EventDisposition::pass);
    EXPECT_EQ(calls_, "aab");
}

TEST_F(LocalEventsTest, SwallowedEventGoesNoFurther) {
    const auto first = events_.addMonitor(keys, noting("a", EventDisposition::swallow));
    const auto second = events_.addMonitor(keys, noting("b"));
    EXPECT_EQ(events_.deliver({EventType::keyDown}), EventDisposition::swallow);
    EXPECT_EQ(calls_, "a");
}

TEST_F(LocalEventsTest, HandlerSeesTheEventAsTheCurrentOne) {
    const Event event{EventType::keyDown, modifier::shift, 0, 0, 7, 53, "\x1b"};
    std::optional<Event> current;
    const auto monitor = events_.addMonitor(keys, [&](const Event&) {
        current = currentEvent_.get();
        return EventDisposition::pass;
    });
    events_.deliver(event);
    EXPECT_EQ(current, event);
    EXPECT_FALSE(currentEvent_.get());
}

TEST_F(LocalEventsTest, MonitorsMayComeAndGoWhileTheyAreCalled) {
    std::unique_ptr<EventMonitor> first;
    std::unique_ptr<EventMonitor> second;
    std::unique_ptr<EventMonitor> third;
    first = events_.addMonitor(presses, [&](const Event&) {
        calls_ += "a";
        third = events_.addMonitor(presses, noting("c"));
        first.reset();
        second.reset();
        return EventDisposition::pass;
    });
    second = events_.addMonitor(presses, noting("b"));
    events_.deliver({EventType::leftMouseDown});
    EXPECT_EQ(calls_, "a") << "neither the removed one nor the new one";
    events_.deliver({EventType::leftMouseDown});
    EXPECT_EQ(calls_, "ac");
}

TEST_F(LocalEventsTest, TellsOfMonitorsAndPanels) {
    int changes = 0;
    const auto listening = events_.onChange([&] { ++changes; });
    EXPECT_FALSE(events_.isMonitored(EventType::keyDown));
    {
        const auto monitor = events_.addMonitor(keys, noting("a"));
        EXPECT_TRUE(events_.isMonitored(EventType::keyDown));
        EXPECT_FALSE(events_.isMonitored(EventType::leftMouseDown));
        EXPECT_EQ(changes, 1);
    }
    EXPECT_FALSE(events_.isMonitored(EventType::keyDown));
    EXPECT_EQ(changes, 2);
    {
        const auto one = events_.addPanel();
        { const auto other = events_.addPanel(); }
        EXPECT_TRUE(events_.showsPanel()) << "one of two is left";
        EXPECT_EQ(changes, 5);
    }
    EXPECT_FALSE(events_.showsPanel());
    EXPECT_EQ(changes, 6);
}

TEST_F(LocalEventsTest, PressIsKnownByItsTime) {
    EXPECT_FALSE(events_.wasPressedAt(0));
    events_.notePress(1000);
    EXPECT_TRUE(events_.wasPressedAt(1000));
    EXPECT_FALSE(events_.wasPressedAt(1001));
}

TEST_F(LocalEventsTest, KeysAreTranslatedByTheDisplay) {
    EXPECT_FALSE(events_.keyDown(9, 0, 3)) << "before there is a display";
    events_.setKeyTranslation([](std::uint32_t keycode, std::uint32_t state) -> std::optional<Event> {
        if (keycode != 9)
            return std::nullopt;
        return Event{EventType::keyDown, state, 0, 0, 0, 53};
    });
    EXPECT_EQ(events_.keyDown(9, modifier::command, 3),
              (Event{EventType::keyDown, modifier::command, 0, 0, 3, 53}));
    EXPECT_FALSE(events_.keyDown(50, 0, 3)) << "a modifier";
}

}  // namespace

}  // namespace velmo
