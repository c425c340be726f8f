#pragma once

#include "hot_key_service.h"
#include "linux/x11/connection.h"
#include "linux/x11/key_grab.h"
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
    HotKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers);

    std::unique_ptr<HotKeyEventHandler> installEventHandler(const HotKeyEventType& type,
                                                            Handler handler) override;
    Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
                                std::uint32_t options) override;

    /// True where one of our hot keys has the combination.
    bool holds(const KeyCombination& combination) const { return isHeld(combination, nullptr); }

private:
    class Grab;
    class InstalledHandler;
    struct Entry;

    std::optional<KeyCombination> combinationOf(std::uint32_t keyCode, std::uint32_t modifiers) const;
    /// True where another one of our hot keys has the combination.
    bool isHeld(const KeyCombination& combination, const Grab* except) const;
    bool take(const KeyCombination& combination, const Grab* taker) const;
    void letGo(const KeyCombination& combination) const;
    void followKeys();
    void handle(const xcb_generic_event_t& event);
    void pressed(const xcb_key_press_event_t& event);

    Connection& connection_;
    Modifiers& modifiers_;
    Keyboard& keyboard_;
    /// The states of the locks that keys are grabbed with.
    std::vector<std::uint16_t> locks_;
    std::list<Grab*> grabs_;
    std::list<std::shared_ptr<Entry>> entries_;
    /// The keys that are held down while the keyboard is ours: first the one that began it.
    std::vector<xcb_keycode_t> heldKeys_;
    velmo::Registration keyboardChanges_;
    velmo::Registration modifierChanges_;
    velmo::Registration events_;
};

}  // namespace velmo::x11
