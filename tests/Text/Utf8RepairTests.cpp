#include "Text/Utf8Repair.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace {

using foundation::TextBuffer;

std::string repaired(std::string_view bytes) {
    return std::string(text::repairUtf8(TextBuffer(bytes)).view());
}

TEST(Utf8RepairTests, GivesAWellFormedTextBackInTheSameMemory) {
    TextBuffer buffer(std::string_view("caf\u00E9 \u20AC \U0001F600 a\0b", 18));
    const char* address = buffer.view().data();
    const TextBuffer result = text::repairUtf8(std::move(buffer));
    EXPECT_EQ(result.view().data(), address);
    EXPECT_EQ(result.view(), std::string_view("caf\u00E9 \u20AC \U0001F600 a\0b", 18));
}

TEST(Utf8RepairTests, LeavesAnEmptyTextEmpty) {
    EXPECT_EQ(repaired(""), "");
}

TEST(Utf8RepairTests, PutsOneReplacementCharacterForEachIllFormedSequence) {
    EXPECT_EQ(repaired("a\x80z"), "a\uFFFDz");
    EXPECT_EQ(repaired("a\xE2\x82z"), "a\uFFFDz");
    EXPECT_EQ(repaired("a\xED\xA0\x80z"), "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(repaired("\xF0\x9F\x98"), "\uFFFD");
    EXPECT_EQ(repaired("\xC0\xAF"), "\uFFFD\uFFFD");
    EXPECT_EQ(repaired("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
              "a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd")
        << "the example of the Unicode Standard";
}

TEST(Utf8RepairTests, AgreesWithTheReferenceOnEveryFourBytesOfEachKind) {
    constexpr auto kinds = std::to_array<unsigned char>(
        {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
         0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF});
    std::size_t illFormed = 0;
    for (const unsigned char a : kinds) {
        for (const unsigned char b : kinds) {
            for (const unsigned char c : kinds) {
                for (const unsigned char d : kinds) {
                    const std::string bytes{static_cast<char>(a),
                                            static_cast<char>(b),
                                            static_cast<char>(c),
                                            static_cast<char>(d)};
                    const std::string result = repaired(bytes);
                    ASSERT_EQ(result, reference::repairUtf8(bytes));
                    illFormed += result != bytes ? 1U : 0U;
                }
            }
        }
    }
    EXPECT_GT(illFormed, 300'000U);
}

TEST(Utf8RepairTests, RepairsATextOfNothingButBrokenBytes) {
    std::string expected;
    for (int i = 0; i < 100'000; ++i) {
        expected += "\uFFFD";
    }
    EXPECT_EQ(repaired(std::string(100'000, '\xFF')), expected);
}

} // namespace
