#pragma once

#include "platform/hot_key_service.h"
#include "platform/run_loop.h"

#include <map>

namespace velmo {

/// Shortcuts that work while any application is in front, each with what it does.
class HotkeyManager {
public:
    /// Identifiers begin with `firstID`.
    HotkeyManager(HotKeyService& service, RunLoop& runLoop, std::uint32_t firstID = 1);
    HotkeyManager(const HotkeyManager&) = delete;
    HotkeyManager& operator=(const HotkeyManager&) = delete;
    ~HotkeyManager();

    /// `keyCode` is a virtual key code, `modifiers` are bits as in the modifier flags of events. The action
    /// runs in a later turn of the loop than the press. Absent where the system refuses the shortcut.
    std::optional<std::uint32_t> registerHotkey(std::uint16_t keyCode, std::uint64_t modifiers,
                                                std::function<void()> action);
    /// Ignores an absent or unknown identifier.
    void unregisterHotkey(std::optional<std::uint32_t> id);

private:
    struct Registration {
        std::unique_ptr<HotKey> ref;
        std::function<void()> action;
    };

    std::uint32_t takeID();
    void pressed(const HotKeyEvent& event);

    HotKeyService& service_;
    RunLoop& runLoop_;
    std::map<std::uint32_t, Registration> registrations_;
    std::unique_ptr<HotKeyEventHandler> handlerRef_;
    /// What the next attempt gets; never used again, whatever comes of the attempt.
    std::uint32_t nextID_;
};

}  // namespace velmo
