#pragma once

#include "bar_session.h"

#include "linux/x11/global_events.h"
#include "linux/x11/hot_keys.h"
#include "linux/x11/key_events.h"
#include "linux/x11/panel_keys.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmo::desktop {

/// A bar and all that tells of the user's presses and keys.
class OwnEventsSession : public BarSession {
protected:
    static constexpr EventMask presses = maskOf(EventType::leftMouseDown) | maskOf(EventType::rightMouseDown);
    static constexpr EventMask keys = maskOf(EventType::keyDown);

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

}  // namespace velmo::desktop
