#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// What the system's hot-key service answers; 0 means success.
using HotKeyStatus = std::int32_t;

/// Which hot key of which program; given at registration, and given back with each press.
struct HotKeyID {
    /// A four-character code that names the program.
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const HotKeyID&) const = default;
};

struct HotKeyEvent {
    /// Absent where the system does not tell.
    std::optional<HotKeyID> directObject;
};

/// Which events a handler is called for.
struct HotKeyEventType {
    /// A four-character code.
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;

    bool operator==(const HotKeyEventType&) const = default;
};

/// A hot key was pressed.
inline constexpr HotKeyEventType hotKeyPressed{0x6b657962, 5};

/// Modifiers of hot keys, as bits; the numbers are the same on every system.
namespace hot_key_modifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace hot_key_modifier

inline constexpr std::uint32_t noHotKeyOptions = 0;

/// A key that the system reports wherever it is pressed; destroying it ends that.
class HotKey {
public:
    virtual ~HotKey() = default;
};

/// An installed handler; destroying it removes it.
class HotKeyEventHandler {
public:
    virtual ~HotKeyEventHandler() = default;
};

/// Keys that work while any application is in front.
class HotKeyService {
public:
    struct Registration {
        HotKeyStatus status = 0;
        /// Null where the system gave none.
        std::unique_ptr<HotKey> hotKey;
    };
    /// The event is null where the system passed none. The result says what became of it; 0 consumes it.
    using Handler = std::function<HotKeyStatus(const HotKeyEvent* event)>;

    virtual ~HotKeyService() = default;

    /// Calls the handler on the main thread for each event of the type. Null where the system refuses.
    virtual std::unique_ptr<HotKeyEventHandler> installEventHandler(const HotKeyEventType& type,
                                                                    Handler handler) = 0;
    /// `keyCode` is a virtual key code, which names a key by its place on the keyboard; `modifiers` are bits
    /// of `hot_key_modifier`. A key that another program holds gives a status other than 0. Where the same
    /// combination is registered several times, each registration is reported, the oldest first.
    virtual Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
                                        std::uint32_t options) = 0;
};

}  // namespace velmo
