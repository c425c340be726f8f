#include "hotkeys/hotkey_manager.h"

#include "hotkeys/hot_key_modifiers.h"

#include <cstdlib>
#include <limits>

namespace velmo {

namespace {

/// "VLMO"
constexpr std::uint32_t signature = 0x564C4D4F;
constexpr HotKeyStatus noError = 0;

}  // namespace

HotkeyManager::HotkeyManager(HotKeyService& service, RunLoop& runLoop, std::uint32_t firstID)
    : service_(service), runLoop_(runLoop), nextID_(firstID) {
    // Every press is consumed, also one that nothing is registered for: no other handler is to get it.
    handlerRef_ = service_.installEventHandler(hotKeyPressed, [this](const HotKeyEvent* event) {
        if (event != nullptr)
            pressed(*event);
        return noError;
    });
}

HotkeyManager::~HotkeyManager() {
    while (!registrations_.empty())
        unregisterHotkey(registrations_.begin()->first);
}

std::optional<std::uint32_t> HotkeyManager::registerHotkey(std::uint16_t keyCode, std::uint64_t modifiers,
                                                           std::function<void()> action) {
    const std::uint32_t id = takeID();
    auto [status, ref] =
        service_.registerHotKey(keyCode, hotKeyModifiers(modifiers), {signature, id}, noHotKeyOptions);
    if (status != noError || !ref)
        return std::nullopt;
    registrations_.emplace(id, Registration{std::move(ref), std::move(action)});
    return id;
}

void HotkeyManager::unregisterHotkey(std::optional<std::uint32_t> id) {
    if (!id)
        return;
    // Out of the table first: what ends with the action may look into it.
    if (auto removed = registrations_.extract(*id))
        removed.mapped().ref.reset();
}

std::uint32_t HotkeyManager::takeID() {
    // Beginning anew would give a living shortcut's identifier away.
    if (nextID_ == std::numeric_limits<std::uint32_t>::max())
        std::abort();
    return nextID_++;
}

void HotkeyManager::pressed(const HotKeyEvent& event) {
    const auto found = registrations_.find(event.directObject.value_or(HotKeyID{}).id);
    if (found != registrations_.end())
        runLoop_.post(found->second.action);
}

}  // namespace velmo
