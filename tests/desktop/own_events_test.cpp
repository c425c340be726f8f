#include "bar_session.h"

#include "linux/x11/global_events.h"
#include "linux/x11/hot_keys.h"
#include "linux/x11/key_events.h"
#include "linux/x11/panel_keys.h"

#include <xcb/xtest.h>

#include <cstdlib>
#include <vector>

namespace velmo::desktop {

namespace {

constexpr EventMask presses = maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown);
constexpr EventMask keys = maskOf(EventType::keyDown);
constexpr std::uint32_t keyK = 40;
constexpr std::uint32_t keyEscape = 53;

class OwnEvents : public BarSession {
protected:
    void SetUp() override {
        BarSession::SetUp();
        startServer();
    }
    void TearDown() override {
        panelKeys_.reset();
        hotKeys_.reset();
        keyEvents_.reset();
        keyboard_.reset();
        events_.reset();
        BarSession::TearDown();
    }
    void start() {
        startBar();
        events_ = std::make_unique<x11::GlobalEvents>(*bar_);
        keyboard_ = std::make_unique<x11::Keyboard>(*connection_);
        keyEvents_ = std::make_unique<x11::KeyEvents>(*connection_, *keyboard_, *modifiers_);
        hotKeys_ = std::make_unique<x11::HotKeys>(*connection_, *keyboard_, *modifiers_);
        panelKeys_ = std::make_unique<x11::PanelKeys>(*connection_, *keyboard_, *modifiers_, *hotKeys_,
                                                      localEvents_, *keyEvents_);
    }

    /// Made by this process through a connection that is not the bar's, as the toolkit's windows are.
    xcb_window_t makeToolkitWindow(bool managed, const Area& area) {
        xcb_connection_t* raw = x().raw();
        const xcb_window_t window = xcb_generate_id(raw);
        const std::uint32_t values[] = {0x224466, managed ? 0U : 1U, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, x().root(), static_cast<std::int16_t>(area.x),
                          static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(raw, window);
        xcb_flush(raw);
        EXPECT_TRUE(turnUntil([&] { return x().isViewable(window); }));
        return window;
    }

    void clickAt(int pixelX, int pixelY, int button = 1) const {
        xdotool(
            {"mousemove", std::to_string(pixelX), std::to_string(pixelY), "click", std::to_string(button)});
    }
    void turnFor(milliseconds time) {
        turnUntil([] { return false; }, time);
    }
    /// How many presses the global monitors report while something is done.
    int globalPressesDuring(const std::function<void()>& deed) {
        int count = 0;
        const auto monitor = events_->addGlobalMonitor(presses, [&](const Event&) { ++count; });
        connection_->sync();
        deed();
        turnFor(milliseconds(60));
        return count;
    }

    /// Presses and releases, with so many other events just before that, all before the bar looks.
    void clickAfterEvents(const Area& area, int count) {
        xcb_connection_t* raw = x().raw();
        xcb_test_fake_input(raw, XCB_MOTION_NOTIFY, 0, 0, x().root(), static_cast<std::int16_t>(area.midX()),
                            static_cast<std::int16_t>(area.midY()), 0);
        for (int number = 0; number < count; ++number)
            xcb_change_property(raw, XCB_PROP_MODE_REPLACE, x().root(), XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                                0, nullptr);
        xcb_test_fake_input(raw, XCB_BUTTON_PRESS, 1, 0, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_test_fake_input(raw, XCB_BUTTON_RELEASE, 1, 0, XCB_WINDOW_NONE, 0, 0, 0);
        x().exists(x().root());
    }

    void focus(xcb_window_t window) const {
        xcb_set_input_focus(x().raw(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        xcb_flush(x().raw());
    }
    /// Key presses that the test's own window has got by now.
    int keysInWindow() const {
        int count = 0;
        x().exists(x().root());
        while (auto* event = xcb_poll_for_event(x().raw())) {
            count += (event->response_type & 0x7f) == XCB_KEY_PRESS ? 1 : 0;
            std::free(event);
        }
        return count;
    }
    std::unique_ptr<EventMonitor> monitorKeys() {
        return events_->addLocalMonitor(keys, [this](const Event& event) {
            seen_.push_back(event);
            return EventDisposition::swallow;
        });
    }
    void type(const std::string& key) {
        connection_->sync();
        xdotool({"key", key});
        turnFor(milliseconds(40));
    }
    Event keyDown(std::uint32_t virtualKey, std::uint32_t state = 0) const {
        const auto event = keyEvents_->keyDown(*keyboard_->keycodeOf(virtualKey), state);
        EXPECT_TRUE(event);
        return event.value_or(Event{});
    }
    void setLayout(const std::vector<std::string>& arguments) {
        std::vector<std::string> command = {"setxkbmap"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        outputOf(command, environment_);
        turnFor(milliseconds(50));
    }

    std::unique_ptr<x11::GlobalEvents> events_;
    std::unique_ptr<x11::Keyboard> keyboard_;
    std::unique_ptr<x11::KeyEvents> keyEvents_;
    std::unique_ptr<x11::HotKeys> hotKeys_;
    std::unique_ptr<x11::PanelKeys> panelKeys_;
    std::vector<Event> seen_;
};

TEST_F(OwnEvents, PressOnOneOfOurItemsIsNoneElsewhereHoweverManyEventsCameBefore) {
    start();
    const auto item = bar_->makeStatusItem(30);
    turnFor(milliseconds(60));
    const auto own = areaOnScreen(*bar_->items().back());
    for (int count = 90; count < 110; ++count)
        EXPECT_EQ(globalPressesDuring([&] { clickAfterEvents(own, count); }), 0) << count << " events before";
    EXPECT_EQ(globalPressesDuring([&] { clickAfterEvents({600, 400, 2, 2}, 99); }), 1);
}

TEST_F(OwnEvents, PressesInTheToolkitsWindowsAreNotGlobal) {
    startWindowManager();
    start();
    const auto panel = makeToolkitWindow(false, {100, 200, 120, 60});
    const auto window = makeToolkitWindow(true, {400, 300, 200, 100});
    ASSERT_TRUE(eventually([&] { return x().parent(window) != x().root(); })) << "framed";
    const auto inside = *x().area(window);
    const auto frame = *x().area(x().parent(window));
    ASSERT_LT(frame.y + 3, inside.y) << "a title bar";
    EXPECT_EQ(globalPressesDuring([&] { clickAt(150, 230); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(inside.midX(), inside.midY(), 3); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(inside.midX(), frame.y + 3); }), 0);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(900, 600); }), 1) << "beside them";
    xcb_unmap_window(x().raw(), panel);
    x().exists(panel);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(150, 230); }), 1) << "where it was";
}

TEST_F(OwnEvents, PressesInOtherProgramsWindowsAreGlobal) {
    startWindowManager();
    start();
    const auto other = startOrdinaryWindow();
    const auto area = *x().area(other);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(area.midX(), area.midY()); }), 1);
    const auto icon = makeIcon(24, std::vector<std::uint32_t>(iconSide * iconSide, 0xff3366));
    dock(icon);
    const auto place = *x().area(icon);
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 1) << "an icon in our bar";
}

TEST_F(OwnEvents, PressOnAnItemOfOursPassesByTheMonitorsFirst) {
    start();
    const auto item = bar_->makeStatusItem(40);
    int actions = 0;
    item->button()->setAction([&] { ++actions; });
    item->button()->sendActionOn(maskOf(EventType::leftMouseDown));
    turnFor(milliseconds(20));
    const auto window = bar_->items().back()->window();
    const auto place = areaOnScreen(*bar_->items().back());
    auto disposition = EventDisposition::pass;
    auto monitor = events_->addLocalMonitor(presses, [&](const Event& event) {
        seen_.push_back(event);
        EXPECT_EQ(actions, static_cast<int>(seen_.size()) - 1) << "before the item";
        return disposition;
    });
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 0);
    ASSERT_EQ(seen_.size(), 1U);
    EXPECT_EQ(seen_[0].type, EventType::leftMouseDown);
    EXPECT_EQ(seen_[0].windowNumber, window);
    EXPECT_EQ(actions, 1);

    disposition = EventDisposition::swallow;
    EXPECT_EQ(globalPressesDuring([&] { clickAt(place.midX(), place.midY()); }), 0);
    EXPECT_EQ(seen_.size(), 2U);
    EXPECT_EQ(actions, 1) << "it does not arrive";
    monitor.reset();
    clickAt(place.midX(), place.midY());
    EXPECT_TRUE(turnUntil([&] { return actions == 2; }));
    EXPECT_EQ(seen_.size(), 2U);
}

TEST_F(OwnEvents, EscapeIsThePanelsWhoeverHasTheKeyboard) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("Escape");
    ASSERT_EQ(seen_.size(), 1U);
    EXPECT_EQ(seen_[0].type, EventType::keyDown);
    EXPECT_EQ(seen_[0].keyCode, keyEscape);
    EXPECT_EQ(seen_[0].charactersIgnoringModifiers, "\x1b");
    EXPECT_EQ(keysInWindow(), 0);
    type("Caps_Lock");
    type("Num_Lock");
    EXPECT_EQ(keysInWindow(), 2) << "other keys go where they always go";
    type("Escape");
    EXPECT_EQ(seen_.size(), 2U) << "whatever the locks";
    EXPECT_EQ(keysInWindow(), 0);
}

TEST_F(OwnEvents, EscapeIsThePanelsWhicheverModifiersAreHeld) {
    start();
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    for (const char* combination :
         {"shift+Escape", "ctrl+Escape", "alt+Escape", "super+Escape", "shift+ctrl+alt+super+Escape"}) {
        seen_.clear();
        type(combination);
        ASSERT_EQ(seen_.size(), 1U) << combination;
        EXPECT_EQ(seen_[0].keyCode, keyEscape);
        EXPECT_NE(seen_[0].modifierFlags, 0U);
    }
    // Also those that have no part in shortcuts.
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    for (const char* combination : {"ISO_Level3_Shift+Escape", "shift+super+ISO_Level3_Shift+Escape"}) {
        seen_.clear();
        xdotool({"key", combination});
        turnFor(milliseconds(40));
        ASSERT_EQ(seen_.size(), 1U) << combination;
        EXPECT_EQ(seen_[0].keyCode, keyEscape);
    }
}

TEST_F(OwnEvents, EscapeOfAHotKeyThatComesWhileAPanelIsShownIsNotThePanelsAnyMore) {
    start();
    int pressed = 0;
    const auto handler = hotKeys_->installEventHandler(hotKeyPressed, [&](const HotKeyEvent*) {
        ++pressed;
        return 0;
    });
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("super+Escape");
    EXPECT_EQ(seen_.size(), 1U);
    const auto registered = hotKeys_->registerHotKey(keyEscape, hot_key_modifier::command, {0, 1}, 0);
    ASSERT_TRUE(registered.hotKey);
    type("super+Escape");
    EXPECT_EQ(pressed, 1);
    EXPECT_EQ(seen_.size(), 1U) << "one press, one effect";
    type("Escape");
    EXPECT_EQ(seen_.size(), 2U);
}

TEST_F(OwnEvents, HotKeyWithEscapeStaysAHotKeyWhileAPanelIsShownAndAfterwards) {
    start();
    int pressed = 0;
    const auto handler = hotKeys_->installEventHandler(hotKeyPressed, [&](const HotKeyEvent*) {
        ++pressed;
        return 0;
    });
    const auto registered = hotKeys_->registerHotKey(keyEscape, hot_key_modifier::command, {0, 1}, 0);
    ASSERT_TRUE(registered.hotKey);
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    const auto monitor = monitorKeys();
    type("super+Escape");
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(seen_.empty());
    panel.reset();
    type("super+Escape");
    EXPECT_EQ(pressed, 2);
}

TEST_F(OwnEvents, EscapeIsOthersWithoutAPanelOrAMonitor) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    auto monitor = monitorKeys();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "no panel";
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    monitor.reset();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "no monitor";
    monitor = events_->addLocalMonitor(presses, [](const Event&) { return EventDisposition::pass; });
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "none of keys";
    monitor = monitorKeys();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 0);
    EXPECT_EQ(seen_.size(), 1U);
    panel.reset();
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1) << "after the panel";
    EXPECT_EQ(seen_.size(), 1U);
}

TEST_F(OwnEvents, EscapeThatClosesThePanelIsHeardOnce) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    auto panel = std::make_unique<Registration>(localEvents_.addPanel());
    std::unique_ptr<EventMonitor> monitor;
    monitor = events_->addLocalMonitor(keys, [&](const Event& event) {
        seen_.push_back(event);
        panel.reset();
        monitor.reset();
        return EventDisposition::swallow;
    });
    connection_->sync();
    xdotool({"keydown", "Escape"});
    // Long enough for it to repeat.
    turnFor(milliseconds(900));
    xdotool({"keyup", "Escape"});
    turnFor(milliseconds(20));
    EXPECT_EQ(seen_.size(), 1U);
    EXPECT_EQ(keysInWindow(), 0) << "the whole press was the panel's";
    type("Escape");
    EXPECT_EQ(keysInWindow(), 1);
}

TEST_F(OwnEvents, EscapeThatAnotherProgramHasStaysTheirs) {
    start();
    xcb_grab_key(x().raw(), 0, x().root(), XCB_MOD_MASK_ANY, *keyboard_->keycodeOf(keyEscape),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    x().exists(x().root());
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    type("Escape");
    EXPECT_TRUE(seen_.empty());
    EXPECT_EQ(keysInWindow(), 1);
}

TEST_F(OwnEvents, EscapeFollowsTheKeyboard) {
    start();
    focus(makeToolkitWindow(false, {100, 200, 120, 60}));
    const auto panel = localEvents_.addPanel();
    const auto monitor = monitorKeys();
    setLayout({"-layout", "us", "-option", "caps:none"});
    type("Escape");
    EXPECT_EQ(seen_.size(), 1U);
    EXPECT_EQ(keysInWindow(), 0);
}

TEST_F(OwnEvents, KeysTellTheirPlaceAndWhatTheyType) {
    start();
    setLayout({"-layout", "us,ru", "-variant", "intl,"});
    EXPECT_EQ(keyDown(keyK).keyCode, keyK);
    EXPECT_EQ(keyDown(keyK).type, EventType::keyDown);
    EXPECT_EQ(keyDown(keyK).charactersIgnoringModifiers, "k");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_SHIFT).charactersIgnoringModifiers, "K");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_LOCK).charactersIgnoringModifiers, "k");
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_CONTROL).charactersIgnoringModifiers, "k");
    constexpr std::uint32_t secondLayout = 1U << 13;
    EXPECT_EQ(keyDown(keyK, secondLayout).charactersIgnoringModifiers, "л");
    EXPECT_EQ(keyDown(keyK, secondLayout | XCB_MOD_MASK_SHIFT).charactersIgnoringModifiers, "Л");
    EXPECT_EQ(keyDown(keyEscape).charactersIgnoringModifiers, "\x1b");
    EXPECT_EQ(keyDown(89).charactersIgnoringModifiers, "7") << "of the keypad";
    EXPECT_EQ(keyDown(50).charactersIgnoringModifiers, "") << "a dead key";
    EXPECT_EQ(keyDown(123).charactersIgnoringModifiers, std::nullopt) << "an arrow";
    EXPECT_EQ(keyDown(keyK, XCB_MOD_MASK_SHIFT | modifiers_->superMask()).modifierFlags,
              modifier::shift | modifier::command);
    for (const std::uint32_t strange : {50U, 0U, 256U, 5000U})
        EXPECT_FALSE(keyEvents_->keyDown(strange, 0)) << strange;
}

TEST_F(OwnEvents, HotKeysThatDoNotMoveAreLeftAlone) {
    start();
    x11::HotKeys hotKeys(*connection_, *keyboard_, *modifiers_);
    std::vector<std::unique_ptr<HotKey>> registered;
    std::vector<std::uint32_t> pressed;
    const auto handler = hotKeys.installEventHandler(hotKeyPressed, [&](const HotKeyEvent* event) {
        pressed.push_back(event->directObject->id);
        return 0;
    });
    using namespace hot_key_modifier;
    for (std::uint32_t code = 0; code < 9; ++code) {
        for (const std::uint32_t modifiers : {command, command | shift, command | control}) {
            auto result = hotKeys.registerHotKey(code, modifiers, {0, code}, 0);
            ASSERT_TRUE(result.hotKey) << code;
            registered.push_back(std::move(result.hotKey));
        }
    }
    auto moving = hotKeys.registerHotKey(keyK, option, {0, keyK}, 0);
    ASSERT_TRUE(moving.hotKey);
    const auto countedRequests = [&] { return xcb_no_operation(connection_->raw()).sequence; };
    connection_->sync();
    const auto before = countedRequests();
    // Alt goes from one modifier to another, Super stays.
    outputOf({"xmodmap", "-e", "remove mod1 = Alt_L Alt_R Meta_L", "-e", "add mod3 = Alt_L Alt_R"},
             environment_);
    ASSERT_TRUE(turnUntil([&] { return modifiers_->altMask() == XCB_MOD_MASK_3; }));
    EXPECT_LT(countedRequests() - before, registered.size() * modifiers_->lockCombinations().size())
        << "far fewer than all of them need";
    xdotool({"key", "alt+k"});
    xdotool({"key", "super+a"});
    EXPECT_TRUE(turnUntil([&] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{keyK, 0}));
}

}  // namespace

}  // namespace velmo::desktop
