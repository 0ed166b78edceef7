#include "Platform/Linux/Tray/MenuRows.h"

#include <gtest/gtest.h>

namespace {

using hotkey::ModifierFlags;
using platform::KeyEquivalent;

TEST(MenuRowsTests, CommandIsTheSuperKey) {
    EXPECT_EQ(platform::busNames(KeyEquivalent{"q"}), QStringList({"Super", "q"}));
    EXPECT_EQ(platform::keySequence(KeyEquivalent{"q"}), QKeySequence(Qt::META | Qt::Key_Q));
}

TEST(MenuRowsTests, PunctuationKeysHaveNamesOnTheBus) {
    EXPECT_EQ(platform::busNames(KeyEquivalent{","}), QStringList({"Super", "comma"}));
    EXPECT_EQ(platform::keySequence(KeyEquivalent{","}), QKeySequence(Qt::META | Qt::Key_Comma));
}

TEST(MenuRowsTests, EveryModifierIsNamed) {
    const KeyEquivalent all{"+",
                            ModifierFlags::control | ModifierFlags::option | ModifierFlags::shift |
                                ModifierFlags::command};
    EXPECT_EQ(platform::busNames(all), QStringList({"Control", "Alt", "Shift", "Super", "plus"}));
    EXPECT_EQ(platform::keySequence(all),
              QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::META | Qt::Key_Plus));
}

TEST(MenuRowsTests, AKeyAloneHasNoModifiers) {
    EXPECT_EQ(platform::busNames(KeyEquivalent{"x", {}}), QStringList({"x"}));
    EXPECT_EQ(platform::keySequence(KeyEquivalent{"x", {}}), QKeySequence(Qt::Key_X));
}

} // namespace
