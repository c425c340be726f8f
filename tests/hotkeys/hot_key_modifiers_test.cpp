#include "hotkeys/hot_key_modifiers.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(HotKeyModifiers, HaveTheirOwnBits) {
    EXPECT_EQ(hotKeyModifiers(0x100000), 0x100U);
    EXPECT_EQ(hotKeyModifiers(0x20000), 0x200U);
    EXPECT_EQ(hotKeyModifiers(0x80000), 0x800U);
    EXPECT_EQ(hotKeyModifiers(0x40000), 0x1000U);
}

TEST(HotKeyModifiers, AreJoined) {
    EXPECT_EQ(hotKeyModifiers(0), 0U);
    EXPECT_EQ(hotKeyModifiers(modifier::command | modifier::option), 0x900U);
    EXPECT_EQ(hotKeyModifiers(modifier::control | modifier::shift), 0x1200U);
    EXPECT_EQ(hotKeyModifiers(modifier::command | modifier::shift | modifier::option | modifier::control),
              0x1B00U);
}

TEST(HotKeyModifiers, DropWhatHasNoCounterpart) {
    EXPECT_EQ(hotKeyModifiers(modifier::capsLock), 0U);
    EXPECT_EQ(hotKeyModifiers(modifier::numericPad | modifier::function), 0U);
    constexpr ModifierFlags four = modifier::command | modifier::shift | modifier::option | modifier::control;
    EXPECT_EQ(hotKeyModifiers(~four), 0U);
    EXPECT_EQ(hotKeyModifiers(~ModifierFlags{0}), 0x1B00U);
}

TEST(HotKeyModifiers, LookAtTheLowHalfOnly) {
    EXPECT_EQ(hotKeyModifiers(modifier::command << 32U), 0U);
    EXPECT_EQ(hotKeyModifiers((modifier::shift << 32U) | modifier::option), 0x800U);
}

}  // namespace
}  // namespace velmo
