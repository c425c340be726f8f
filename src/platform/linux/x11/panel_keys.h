#pragma once

#include "linux/local_events.h"
#include "linux/x11/key_events.h"
#include "linux/x11/key_grab.h"

#include <optional>
#include <vector>

namespace velmo::x11 {

/// A panel never has the keyboard. While one is shown and somebody monitors keys, Escape is ours, whoever has
/// the keyboard; where another program has taken that key for itself, it stays theirs.
class PanelKeys {
public:
    PanelKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers, LocalEvents& localEvents,
              const KeyEvents& keyEvents);
    ~PanelKeys();
    PanelKeys(const PanelKeys&) = delete;
    PanelKeys& operator=(const PanelKeys&) = delete;

private:
    struct Held {
        KeyCombination combination;
        std::vector<std::uint16_t> locks;
    };

    void update();
    void letGo();
    void handle(const xcb_generic_event_t& event);

    Connection& connection_;
    Keyboard& keyboard_;
    Modifiers& modifiers_;
    LocalEvents& localEvents_;
    const KeyEvents& keyEvents_;
    std::optional<Held> held_;
    Registration changes_;
    Registration keyboardChanges_;
    Registration modifierChanges_;
    Registration events_;
};

}  // namespace velmo::x11
