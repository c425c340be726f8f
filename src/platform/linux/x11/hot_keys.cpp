#include "hot_keys.h"

#include "linux/x11/reply.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmo::x11 {

namespace {

/// Answers by which callers on every system can tell a key that does not exist from one that is taken.
constexpr HotKeyStatus noSuchKey = -9879;
constexpr HotKeyStatus keyTaken = -9878;

constexpr std::uint16_t everyModifier = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL |
                                        XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 |
                                        XCB_MOD_MASK_5;

}  // namespace

class HotKeys::Grab : public HotKey {
public:
    Grab(HotKeys& hotKeys, std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
         const Combination& combination)
        : hotKeys_(hotKeys), keyCode_(keyCode), modifiers_(modifiers), id_(id), combination_(combination) {
        hotKeys_.grabs_.push_back(this);
    }
    ~Grab() override {
        hotKeys_.grabs_.remove(this);
        if (combination_ && !hotKeys_.isHeld(*combination_, this))
            hotKeys_.ungrab(*combination_, hotKeys_.modifiers_.lockCombinations());
    }
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;

    const HotKeyID& id() const { return id_; }
    const std::optional<Combination>& combination() const { return combination_; }
    /// Finds its key on the keyboard as it is now. What another program holds meanwhile is not ours.
    void grabAnew() {
        combination_ = hotKeys_.combinationOf(keyCode_, modifiers_);
        if (combination_ && !hotKeys_.isHeld(*combination_, this) && !hotKeys_.grab(*combination_))
            combination_.reset();
    }
    void forget() { combination_.reset(); }

private:
    HotKeys& hotKeys_;
    std::uint32_t keyCode_;
    std::uint32_t modifiers_;
    HotKeyID id_;
    std::optional<Combination> combination_;
};

struct HotKeys::Entry {
    HotKeyEventType type;
    Handler handler;
    bool ended = false;
};

class HotKeys::InstalledHandler : public HotKeyEventHandler {
public:
    InstalledHandler(HotKeys& hotKeys, std::shared_ptr<Entry> entry)
        : hotKeys_(hotKeys), entry_(std::move(entry)) {
        hotKeys_.entries_.push_back(entry_);
    }
    ~InstalledHandler() override {
        entry_->ended = true;
        hotKeys_.entries_.remove(entry_);
    }
    InstalledHandler(const InstalledHandler&) = delete;
    InstalledHandler& operator=(const InstalledHandler&) = delete;

private:
    HotKeys& hotKeys_;
    std::shared_ptr<Entry> entry_;
};

HotKeys::HotKeys(Connection& connection, Modifiers& modifiers)
    : connection_(connection), modifiers_(modifiers), keyboard_(connection) {
    keyboardChanges_ = keyboard_.onChange([this] { grabAnew(); });
    modifierChanges_ = modifiers_.onChange([this] { grabAnew(); });
    events_ = connection.onWindow(connection.root(), [this](const auto& event) { handle(event); });
}

std::unique_ptr<HotKeyEventHandler> HotKeys::installEventHandler(const HotKeyEventType& type,
                                                                 Handler handler) {
    return std::make_unique<InstalledHandler>(*this,
                                              std::make_shared<Entry>(Entry{type, std::move(handler)}));
}

HotKeyService::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    const HotKeyID& id, std::uint32_t /*options*/) {
    const auto combination = combinationOf(keyCode, modifiers);
    if (!combination)
        return {noSuchKey, nullptr};
    if (!isHeld(*combination, nullptr) && !grab(*combination))
        return {keyTaken, nullptr};
    return {0, std::make_unique<Grab>(*this, keyCode, modifiers, id, *combination)};
}

std::optional<HotKeys::Combination> HotKeys::combinationOf(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const {
    const auto key = keyboard_.keycodeOf(keyCode);
    if (!key)
        return std::nullopt;
    Combination combination{*key, 0};
    const auto add = [&](std::uint32_t flag, std::uint16_t mask) {
        if (modifiers & flag)
            combination.modifiers |= mask;
    };
    add(hot_key_modifier::command, modifiers_.superMask());
    add(hot_key_modifier::shift, XCB_MOD_MASK_SHIFT);
    add(hot_key_modifier::option, modifiers_.altMask());
    add(hot_key_modifier::control, XCB_MOD_MASK_CONTROL);
    return combination;
}

bool HotKeys::isHeld(const Combination& combination, const Grab* except) const {
    return std::any_of(grabs_.begin(), grabs_.end(), [&](const Grab* grab) {
        return grab != except && grab->combination() == combination;
    });
}

bool HotKeys::grab(const Combination& combination) const {
    xcb_connection_t* raw = connection_.raw();
    const auto states = modifiers_.lockCombinations();
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(states.size());
    for (const auto lock : states) {
        cookies.push_back(xcb_grab_key_checked(raw, 0, connection_.root(),
                                               static_cast<std::uint16_t>(combination.modifiers | lock),
                                               combination.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    std::vector<std::uint16_t> grabbed;
    for (std::size_t index = 0; index < states.size(); ++index) {
        if (!owned(xcb_request_check(raw, cookies[index])))
            grabbed.push_back(states[index]);
    }
    if (grabbed.size() == states.size())
        return true;
    // Half a hot key would work by chance only.
    ungrab(combination, grabbed);
    return false;
}

void HotKeys::ungrab(const Combination& combination, const std::vector<std::uint16_t>& locks) const {
    for (const auto lock : locks)
        xcb_ungrab_key(connection_.raw(), combination.key, connection_.root(),
                       static_cast<std::uint16_t>(combination.modifiers | lock));
}

void HotKeys::grabAnew() {
    xcb_ungrab_key(connection_.raw(), XCB_GRAB_ANY, connection_.root(), XCB_MOD_MASK_ANY);
    for (auto* grab : grabs_)
        grab->forget();
    for (auto* grab : grabs_)
        grab->grabAnew();
}

void HotKeys::handle(const xcb_generic_event_t& event) {
    const auto type = event.response_type & 0x7f;
    const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
    if (type == XCB_KEY_RELEASE) {
        // With the release of the key that began it, the grab ends: what happens to others then is not heard.
        if (!heldKeys_.empty() && key.detail == heldKeys_.front())
            heldKeys_.clear();
        else
            std::erase(heldKeys_, key.detail);
    } else if (type == XCB_KEY_PRESS &&
               std::find(heldKeys_.begin(), heldKeys_.end(), key.detail) == heldKeys_.end()) {
        heldKeys_.push_back(key.detail);
        pressed(key);
    }
}

void HotKeys::pressed(const xcb_key_press_event_t& event) {
    const Combination combination{
        event.detail, static_cast<std::uint16_t>(event.state & everyModifier & ~modifiers_.lockMask())};
    std::vector<HotKeyEvent> reports;
    for (const auto* grab : grabs_) {
        if (grab->combination() == combination)
            reports.push_back({grab->id()});
    }
    // Copies, because handlers come and go while they are called.
    const std::vector<std::shared_ptr<Entry>> called(entries_.begin(), entries_.end());
    for (const auto& report : reports) {
        for (const auto& entry : called) {
            if (!entry->ended && entry->type == hotKeyPressed)
                entry->handler(&report);
        }
    }
}

}  // namespace velmo::x11
