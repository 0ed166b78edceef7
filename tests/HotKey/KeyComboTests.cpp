#include "HotKey/KeyCombo.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

using foundation::Dictionary;
using hotkey::Key;
using hotkey::KeyCombo;
using hotkey::MainMenuItem;
using hotkey::ModifierFlags;

constexpr std::uint32_t noKeysCode = 0x34;

TEST(KeyComboTests, KeepsCarbonValuesUnchanged) {
    const KeyCombo combo(0xFFFFFFFFU, 0xDEADBEEFU);
    EXPECT_EQ(combo.carbonKeyCode, 0xFFFFFFFFU);
    EXPECT_EQ(combo.carbonModifiers, 0xDEADBEEFU);
}

TEST(KeyComboTests, ConvertsAKeyAndModifiersToCarbonValues) {
    const KeyCombo combo(Key::g, ModifierFlags::command | ModifierFlags::capsLock);
    EXPECT_EQ(combo.carbonKeyCode, 5U);
    EXPECT_EQ(combo.carbonModifiers, 0x100U);
    EXPECT_EQ(combo.key(), Key::g);
    EXPECT_EQ(combo.modifiers(), ModifierFlags::command);
}

TEST(KeyComboTests, SetsTheCodeOfAKey) {
    KeyCombo combo(noKeysCode, 0x100);
    EXPECT_EQ(combo.key(), std::nullopt);
    combo.setKey(Key::k);
    EXPECT_EQ(combo.carbonKeyCode, 0x28U);
    EXPECT_EQ(combo.carbonModifiers, 0x100U);
}

TEST(KeyComboTests, SettingNoKeyReadsBackAsA) {
    KeyCombo combo(Key::k, ModifierFlags::command);
    combo.setKey(std::nullopt);
    EXPECT_EQ(combo.carbonKeyCode, 0U);
    EXPECT_EQ(combo.key(), Key::a);
}

TEST(KeyComboTests, SetsTheCarbonMaskOfModifiers) {
    KeyCombo combo(Key::k, ModifierFlags::command);
    combo.setModifiers(ModifierFlags::option | ModifierFlags::control | ModifierFlags::function);
    EXPECT_EQ(combo.carbonModifiers, 0x1800U);
    EXPECT_EQ(combo.modifiers(), ModifierFlags::option | ModifierFlags::control);
}

TEST(KeyComboTests, DescriptionJoinsGlyphsAndKey) {
    EXPECT_EQ(KeyCombo(Key::k, ModifierFlags::command | ModifierFlags::shift).description(),
              "\u21E7\u2318K");
}

TEST(KeyComboTests, DescriptionWithoutAKeyIsTheGlyphs) {
    EXPECT_EQ(KeyCombo(noKeysCode, 0x1B00).description(), "\u2303\u2325\u21E7\u2318");
    EXPECT_EQ(KeyCombo(noKeysCode, 0).description(), "");
}

TEST(KeyComboTests, IsEqualIfBothValuesAre) {
    EXPECT_EQ(KeyCombo(5, 0x100), KeyCombo(Key::g, ModifierFlags::command));
    EXPECT_NE(KeyCombo(5, 0x100), KeyCombo(4, 0x100));
    EXPECT_NE(KeyCombo(5, 0x100), KeyCombo(5, 0x200));
    // The same modifiers, but another mask.
    EXPECT_NE(KeyCombo(5, 0x100), KeyCombo(5, 0x500));
}

TEST(KeyComboTests, DictionaryHoldsSignedIntegers) {
    const Dictionary dictionary = KeyCombo(0xFFFFFFFFU, 0x100).dictionary();
    EXPECT_EQ(
        dictionary,
        (Dictionary{{"keyCode", std::int64_t{4294967295}}, {"modifiers", std::int64_t{256}}}));
}

TEST(KeyComboTests, RoundTripsThroughItsDictionary) {
    const KeyCombo combo(0xFFFFFFFFU, 0x1100);
    EXPECT_EQ(KeyCombo::fromDictionary(combo.dictionary()), combo);
}

TEST(KeyComboTests, RejectsADictionaryWithAMissingEntry) {
    EXPECT_EQ(KeyCombo::fromDictionary({}), std::nullopt);
    EXPECT_EQ(KeyCombo::fromDictionary({{"keyCode", std::int64_t{5}}}), std::nullopt);
    EXPECT_EQ(KeyCombo::fromDictionary({{"modifiers", std::int64_t{5}}}), std::nullopt);
}

TEST(KeyComboTests, RejectsAKeyCodeThatIsAString) {
    EXPECT_EQ(KeyCombo::fromDictionary({{"keyCode", "5"}, {"modifiers", std::int64_t{256}}}),
              std::nullopt);
}

TEST(KeyComboTests, RejectsNumbersOfOtherTypes) {
    EXPECT_EQ(
        KeyCombo::fromDictionary({{"keyCode", std::uint64_t{5}}, {"modifiers", std::int64_t{256}}}),
        std::nullopt);
    EXPECT_EQ(KeyCombo::fromDictionary({{"keyCode", std::int64_t{5}}, {"modifiers", 256.0}}),
              std::nullopt);
    EXPECT_EQ(KeyCombo::fromDictionary({{"keyCode", true}, {"modifiers", std::int64_t{256}}}),
              std::nullopt);
}

TEST(KeyComboTests, RejectsAWrongTypeBeforeItChecksRanges) {
    EXPECT_EQ(KeyCombo::fromDictionary({{"keyCode", std::int64_t{-1}}, {"modifiers", "256"}}),
              std::nullopt);
}

TEST(KeyComboDeathTest, DiesOnAKeyCodeOfMinusOne) {
    const Dictionary dictionary{{"keyCode", std::int64_t{-1}}, {"modifiers", std::int64_t{256}}};
    EXPECT_DEATH(static_cast<void>(KeyCombo::fromDictionary(dictionary)),
                 "Fatal error: Negative value is not representable");
}

TEST(KeyComboDeathTest, DiesOnAnIntegerAboveThirtyTwoBits) {
    const Dictionary dictionary{{"keyCode", std::int64_t{5}},
                                {"modifiers", std::int64_t{4294967296}}};
    EXPECT_DEATH(static_cast<void>(KeyCombo::fromDictionary(dictionary)),
                 "Fatal error: Not enough bits to represent the passed value");
}

TEST(KeyComboTests, HasFortySixStandardCombosInOrder) {
    std::vector<std::string> descriptions;
    for (const KeyCombo& combo : KeyCombo::standardKeyCombos()) {
        descriptions.push_back(combo.description());
    }
    EXPECT_EQ(descriptions,
              (std::vector<std::string>{"\u2318,",       "\u2318H",        "\u2325\u2318H",
                                        "\u2318Q",       "\u2318N",        "\u2318O",
                                        "\u2318W",       "\u2318S",        "\u21E7\u2318S",
                                        "\u2318R",       "\u21E7\u2318P",  "\u2318P",
                                        "\u2318Z",       "\u21E7\u2318Z",  "\u2318X",
                                        "\u2318C",       "\u2318V",        "\u2325\u21E7\u2318V",
                                        "\u2318A",       "\u2318F",        "\u2325\u2318F",
                                        "\u2318G",       "\u21E7\u2318G",  "\u2318E",
                                        "\u2318J",       "\u21E7\u2318;",  "\u2318;",
                                        "\u2318T",       "\u2318B",        "\u2318I",
                                        "\u2318U",       "\u21E7\u2318=",  "\u2318-",
                                        "\u21E7\u2318C", "\u2325\u2318C",  "\u2325\u2318V",
                                        "\u21E7\u2318[", "\u21E7\u2318\\", "\u21E7\u2318]",
                                        "\u2303\u2318C", "\u2303\u2318V",  "\u2325\u2318T",
                                        "\u2303\u2318S", "\u2303\u2318F",  "\u2318M",
                                        "\u21E7\u2318/"}));
    EXPECT_EQ(descriptions.size(), 46U);
}

TEST(KeyComboTests, TheDefaultShortcutIsAStandardCombo) {
    EXPECT_EQ(KeyCombo::standardKeyCombos()[21], KeyCombo(Key::g, ModifierFlags::command));
}

Dictionary
symbolicHotKey(foundation::Value enabled, foundation::Value code, foundation::Value modifiers) {
    return {{"kHISymbolicHotKeyEnabled", std::move(enabled)},
            {"kHISymbolicHotKeyCode", std::move(code)},
            {"kHISymbolicHotKeyModifiers", std::move(modifiers)}};
}

TEST(KeyComboTests, HasNoSystemCombosIfTheSystemAnswersWithAnError) {
    EXPECT_TRUE(
        KeyCombo::systemKeyCombos(
            {.status = -1, .hotKeys = {{symbolicHotKey(true, std::int64_t{5}, std::int64_t{256})}}})
            .empty());
}

TEST(KeyComboTests, HasNoSystemCombosIfTheArrayIsNull) {
    EXPECT_TRUE(KeyCombo::systemKeyCombos({.status = 0, .hotKeys = std::nullopt}).empty());
}

TEST(KeyComboTests, SystemCombosAreEnabledEntriesThatHoldNumbers) {
    EXPECT_EQ(KeyCombo::systemKeyCombos(
                  {.status = 0,
                   .hotKeys = {{symbolicHotKey(true, std::int64_t{49}, std::int64_t{256}),
                                symbolicHotKey(false, std::int64_t{1}, std::int64_t{256}),
                                symbolicHotKey(std::int64_t{2}, std::uint64_t{5}, 512.9),
                                symbolicHotKey(std::int64_t{0}, std::int64_t{2}, std::int64_t{0}),
                                symbolicHotKey(0.5, true, std::int64_t{0x1000})}}}),
              (std::vector<KeyCombo>{{49U, 256U}, {5U, 512U}, {1U, 0x1000U}}));
}

TEST(KeyComboTests, SystemCombosSkipEntriesThatAreMissingOrOfAnotherType) {
    const Dictionary complete = symbolicHotKey(true, std::int64_t{5}, std::int64_t{256});
    std::vector<Dictionary> hotKeys{{}};
    for (const auto& [key, value] : complete) {
        hotKeys.push_back(complete);
        hotKeys.back().erase(key);
        hotKeys.push_back(complete);
        hotKeys.back().insert_or_assign(key, "1");
    }
    EXPECT_TRUE(KeyCombo::systemKeyCombos({.status = 0, .hotKeys = hotKeys}).empty());
}

TEST(KeyComboTests, SystemCombosTakeTheLowThirtyTwoBits) {
    EXPECT_EQ(KeyCombo::systemKeyCombos(
                  {.status = 0,
                   .hotKeys = {{symbolicHotKey(true, std::int64_t{-1}, std::int64_t{1} << 32),
                                symbolicHotKey(true,
                                               std::numeric_limits<double>::quiet_NaN(),
                                               std::numeric_limits<double>::infinity())}}}),
              (std::vector<KeyCombo>{{0xFFFFFFFFU, 0U}, {0U, 0U}}));
}

MainMenuItem item(std::string keyEquivalent,
                  ModifierFlags mask,
                  std::vector<std::optional<MainMenuItem>> submenu = {}) {
    return {.keyEquivalent = std::move(keyEquivalent),
            .keyEquivalentModifierMask = mask,
            .submenu = std::move(submenu)};
}

TEST(KeyComboTests, HasNoMainMenuCombosWithoutAMenu) {
    EXPECT_TRUE(KeyCombo::mainMenuKeyCombos({}).empty());
}

TEST(KeyComboTests, MainMenuCombosIncludeSubmenus) {
    constexpr auto command = ModifierFlags::command;
    const std::vector<std::optional<MainMenuItem>> mainMenu{
        item("", {}, {item("q", command), item("", {}, {item("H", command)}), item("?", command)}),
        item("k", command | ModifierFlags::shift, {item("\r", {})}),
        item("c", command)};
    EXPECT_EQ(KeyCombo::mainMenuKeyCombos(mainMenu),
              (std::vector<KeyCombo>{{Key::q, command},
                                     {Key::h, command},
                                     {Key::k, command | ModifierFlags::shift},
                                     {Key::return_, {}},
                                     {Key::c, command}}));
}

TEST(KeyComboDeathTest, DiesOnAMainMenuElementThatIsNoItem) {
    const std::vector<std::optional<MainMenuItem>> mainMenu{
        item("", {}, {item("q", ModifierFlags::command), std::nullopt})};
    EXPECT_DEATH(static_cast<void>(KeyCombo::mainMenuKeyCombos(mainMenu)),
                 "Fatal error: NSArray element failed to match the Swift Array Element type");
}

} // namespace
