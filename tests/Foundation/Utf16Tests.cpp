#include "Foundation/Unicode.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

std::string utf8(std::u16string_view text) {
    return std::string(foundation::utf8FromUtf16(text).view());
}

TEST(Utf16Tests, TakesOneToFourBytesForACharacter) {
    EXPECT_EQ(utf8(u""), "");
    EXPECT_EQ(utf8(u"Aé€𝄞z"), "Aé€𝄞z");
    EXPECT_EQ(utf8(u"\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF"),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF");
    EXPECT_EQ(utf8(u"\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf16Tests, KeepsACharacterOfValueZero) {
    EXPECT_EQ(utf8(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf16Tests, PutsTheReplacementCharacterForEachHalfOfAPair) {
    const std::u16string high(1, char16_t{0xD834});
    const std::u16string low(1, char16_t{0xDD1E});
    EXPECT_EQ(utf8(high), "\uFFFD");
    EXPECT_EQ(utf8(low), "\uFFFD");
    EXPECT_EQ(utf8(u"a" + high + u"b"), "a\uFFFDb");
    EXPECT_EQ(utf8(low + high), "\uFFFD\uFFFD");
    EXPECT_EQ(utf8(high + high + low), "\uFFFD𝄞");
    EXPECT_EQ(utf8(high + low + low), "𝄞\uFFFD");
}

TEST(Utf16Tests, TurnsEveryCharacterIntoUtf16AndBack) {
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        if (scalar == 0xD800) {
            scalar = 0xE000;
        }
        const std::u16string utf16 =
            scalar < 0x10000 ? std::u16string(1, static_cast<char16_t>(scalar))
                             : std::u16string{static_cast<char16_t>(0xD7C0 + (scalar >> 10U)),
                                              static_cast<char16_t>(0xDC00 + (scalar & 0x3FFU))};
        ASSERT_EQ(foundation::utf16FromUtf8(utf8(utf16)), utf16) << std::hex << +scalar;
    }
}

TEST(Utf16Tests, KeepsAByteOrderMarkWhereverItStands) {
    EXPECT_EQ(foundation::utf16FromUtf8("\xEF\xBB\xBF\xEF\xBB\xBFz\xEF\xBB\xBF"),
              u"\uFEFF\uFEFFz\uFEFF");
}

} // namespace
