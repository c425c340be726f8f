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

}  // namespace

class HotKeys::Grab : public HotKey {
public:
    Grab(HotKeys& hotKeys, std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
         const KeyCombination& combination)
        : hotKeys_(hotKeys), keyCode_(keyCode), modifiers_(modifiers), id_(id), combination_(combination) {
        hotKeys_.grabs_.push_back(this);
    }
    ~Grab() override {
        hotKeys_.grabs_.remove(this);
        if (combination_)
            hotKeys_.letGo(*combination_);
    }
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;

    const HotKeyID& id() const { return id_; }
    const std::optional<KeyCombination>& combination() const { return combination_; }
    /// As the keyboard is now.
    std::optional<KeyCombination> wanted() const { return hotKeys_.combinationOf(keyCode_, modifiers_); }
    std::optional<KeyCombination> forget() { return std::exchange(combination_, std::nullopt); }
    /// What another program holds meanwhile is not ours.
    void takeWanted() {
        const auto combination = wanted();
        if (combination && hotKeys_.take(*combination, this))
            combination_ = combination;
    }

private:
    HotKeys& hotKeys_;
    std::uint32_t keyCode_;
    std::uint32_t modifiers_;
    HotKeyID id_;
    std::optional<KeyCombination> combination_;
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

HotKeys::HotKeys(Connection& connection, Keyboard& keyboard, Modifiers& modifiers)
    : connection_(connection),
      modifiers_(modifiers),
      keyboard_(keyboard),
      locks_(modifiers.lockCombinations()) {
    keyboardChanges_ = keyboard_.onChange([this] { followKeys(); });
    modifierChanges_ = modifiers_.onChange([this] { followKeys(); });
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
    if (!take(*combination, nullptr))
        return {keyTaken, nullptr};
    return {0, std::make_unique<Grab>(*this, keyCode, modifiers, id, *combination)};
}

std::optional<KeyCombination> HotKeys::combinationOf(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const auto key = keyboard_.keycodeOf(keyCode);
    if (!key)
        return std::nullopt;
    KeyCombination combination{*key, 0};
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

bool HotKeys::isHeld(const KeyCombination& combination, const Grab* except) const {
    return std::any_of(grabs_.begin(), grabs_.end(), [&](const Grab* grab) {
        return grab != except && grab->combination() == combination;
    });
}

bool HotKeys::take(const KeyCombination& combination, const Grab* taker) const {
    return isHeld(combination, taker) || !grabKeys(connection_, {combination}, locks_).empty();
}

/// Where nobody else of ours has it.
void HotKeys::letGo(const KeyCombination& combination) const {
    if (!isHeld(combination, nullptr))
        ungrabKey(connection_, combination, locks_);
}

/// What has moved is let go before anything is taken anew, because keys may have changed places.
void HotKeys::followKeys() {
    const auto locks = modifiers_.lockCombinations();
    std::vector<Grab*> moved;
    for (auto* grab : grabs_) {
        if (locks != locks_ || grab->combination() != grab->wanted())
            moved.push_back(grab);
    }
    for (auto* grab : moved) {
        if (const auto former = grab->forget())
            letGo(*former);
    }
    locks_ = locks;
    for (auto* grab : moved)
        grab->takeWanted();
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
    const KeyCombination combination = pressedCombination(event, modifiers_.lockMask());
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
