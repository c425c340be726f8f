#pragma once

#include "hot_key_service.h"
#include "linux/x11/connection.h"
#include "linux/x11/keyboard.h"
#include "linux/x11/modifiers.h"

#include <list>
#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Hot keys as passive grabs on the root window, one for each state that the locks can have. Grabs follow the
/// keyboard and its modifiers. A press is reported once, however long it lasts.
class HotKeys : public HotKeyService {
public:
    HotKeys(Connection& connection, Modifiers& modifiers);

    std::unique_ptr<HotKeyEventHandler> installEventHandler(const HotKeyEventType& type,
                                                            Handler handler) override;
    Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
                                std::uint32_t options) override;

private:
    class Grab;
    class InstalledHandler;
    struct Entry;
    struct Combination {
        xcb_keycode_t key = 0;
        std::uint16_t modifiers = 0;

        bool operator==(const Combination&) const = default;
    };

    std::optional<Combination> combinationOf(std::uint32_t keyCode, std::uint32_t modifiers) const;
    /// True where another one of our hot keys has the combination.
    bool isHeld(const Combination& combination, const Grab* except) const;
    bool grab(const Combination& combination) const;
    void ungrab(const Combination& combination, const std::vector<std::uint16_t>& locks) const;
    void grabAnew();
    void handle(const xcb_generic_event_t& event);
    void pressed(const xcb_key_press_event_t& event);

    Connection& connection_;
    Modifiers& modifiers_;
    Keyboard keyboard_;
    std::list<Grab*> grabs_;
    std::list<std::shared_ptr<Entry>> entries_;
    /// The keys that are held down while the keyboard is ours: first the one that began it.
    std::vector<xcb_keycode_t> heldKeys_;
    velmo::Registration keyboardChanges_;
    velmo::Registration modifierChanges_;
    velmo::Registration events_;
};

}  // namespace velmo::x11
