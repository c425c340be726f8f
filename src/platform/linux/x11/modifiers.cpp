#include "modifiers.h"

#include "linux/x11/reply.h"

#include <xcb/xcb_keysyms.h>

#include <initializer_list>
#include <memory>
#include <span>
#include <utility>

namespace velmo::x11 {

namespace {

namespace keysym {
constexpr xcb_keysym_t numLock = 0xff7f;
constexpr xcb_keysym_t scrollLock = 0xff14;
constexpr xcb_keysym_t altLeft = 0xffe9;
constexpr xcb_keysym_t altRight = 0xffea;
constexpr xcb_keysym_t superLeft = 0xffeb;
constexpr xcb_keysym_t superRight = 0xffec;
}  // namespace keysym

struct FreeKeySymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};
using KeySymbols = std::unique_ptr<xcb_key_symbols_t, FreeKeySymbols>;

/// The modifier bits that any key with one of these symbols sets.
std::uint16_t bitsOf(xcb_key_symbols_t* symbols, const xcb_get_modifier_mapping_reply_t& mapping,
                     std::initializer_list<xcb_keysym_t> wanted) {
    const std::span keycodes(xcb_get_modifier_mapping_keycodes(&mapping),
                             static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(&mapping)));
    std::uint16_t bits = 0;
    for (std::size_t index = 0; index < keycodes.size(); ++index) {
        for (const auto symbol : wanted) {
            if (keycodes[index] != 0 && xcb_key_symbols_get_keysym(symbols, keycodes[index], 0) == symbol)
                bits |= static_cast<std::uint16_t>(1U << (index / mapping.keycodes_per_modifier));
        }
    }
    return bits;
}

/// Every subset of the mask, from itself down to nothing.
std::vector<std::uint16_t> subsetsOf(std::uint16_t mask) {
    std::vector<std::uint16_t> subsets;
    for (std::uint16_t subset = mask; subset != 0; subset = static_cast<std::uint16_t>((subset - 1) & mask))
        subsets.push_back(subset);
    subsets.push_back(0);
    return subsets;
}

/// The lowest set bit; a key that sets several modifiers is told by the first.
std::uint16_t lowestBit(std::uint16_t bits) {
    return static_cast<std::uint16_t>(bits & -bits);
}

}  // namespace

Modifiers::Modifiers(Connection& connection)
    : connection_(connection),
      reading_(connection.loop(), [this] { read(); }),
      changes_(connection.onKeyboardChange([this](const auto&) { reading_.request(); })) {
    read();
}

void Modifiers::read() {
    const KeySymbols symbols(xcb_key_symbols_alloc(connection_.raw()));
    const auto mapping = owned(xcb_get_modifier_mapping_reply(
        connection_.raw(), xcb_get_modifier_mapping(connection_.raw()), nullptr));
    if (!symbols || !mapping || mapping->keycodes_per_modifier == 0)
        return;
    const auto bit = [&](std::initializer_list<xcb_keysym_t> wanted) {
        return lowestBit(bitsOf(symbols.get(), *mapping, wanted));
    };
    Masks masks;
    masks.alt = bit({keysym::altLeft, keysym::altRight});
    masks.super = bit({keysym::superLeft, keysym::superRight});
    masks.numLock = bit({keysym::numLock});
    masks.scrollLock = bit({keysym::scrollLock});
    if (masks.alt == 0)
        masks.alt = XCB_MOD_MASK_1;
    if (masks.super == 0)
        masks.super = XCB_MOD_MASK_4;
    if (std::exchange(masks_, masks) != masks)
        listeners_.notify();
}

ModifierFlags Modifiers::flags(std::uint16_t state) const {
    ModifierFlags flags = 0;
    const auto add = [&](std::uint16_t mask, ModifierFlags flag) {
        if (state & mask)
            flags |= flag;
    };
    add(XCB_MOD_MASK_LOCK, modifier::capsLock);
    add(XCB_MOD_MASK_SHIFT, modifier::shift);
    add(XCB_MOD_MASK_CONTROL, modifier::control);
    add(masks_.alt, modifier::option);
    add(masks_.super, modifier::command);
    return flags;
}

std::uint16_t Modifiers::lockMask() const {
    return static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | masks_.numLock | masks_.scrollLock);
}

std::vector<std::uint16_t> Modifiers::lockCombinations() const {
    return subsetsOf(lockMask());
}

std::vector<std::uint16_t> Modifiers::combinations() const {
    return subsetsOf(static_cast<std::uint16_t>(everyModifier & ~lockMask()));
}

}  // namespace velmo::x11
