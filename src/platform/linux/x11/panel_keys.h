#pragma once

#include "linux/local_events.h"
#include "linux/x11/hot_keys.h"
#include "linux/x11/key_events.h"
#include "linux/x11/key_grab.h"

#include <optional>
#include <vector>

namespace velmo::x11 {

/// A panel never has the keyboard. While one is shown and somebody monitors keys, Escape is ours, whoever has
/// the keyboard and whichever modifiers are held; where another program or a hot key has taken a combination,
/// that one stays theirs.
class PanelKeys {
public:
    PanelKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers, const HotKeys& hotKeys,
              LocalEvents& localEvents, const KeyEvents& keyEvents);
    ~PanelKeys();
    PanelKeys(const PanelKeys&) = delete;
    PanelKeys& operator=(const PanelKeys&) = delete;

private:
    struct Held {
        std::vector<KeyCombination> combinations;
        std::vector<std::uint16_t> locks;
    };

    std::vector<KeyCombination> combinations() const;
    void update();
    void letGo();
    void handle(const xcb_generic_event_t& event);

    Connection& connection_;
    Keyboard& keyboard_;
    Modifiers& modifiers_;
    const HotKeys& hotKeys_;
    LocalEvents& localEvents_;
    const KeyEvents& keyEvents_;
    std::optional<Held> held_;
    Registration changes_;
    Registration keyboardChanges_;
    Registration modifierChanges_;
    Registration events_;
};

}  // namespace velmo::x11
