#include "Text/Utf8.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <string>
#include <string_view>

namespace {

using text::decodeLast;

TEST(Utf8Tests, DecodesEveryCodePointAtTheEnd) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            continue;
        }
        std::string encoded;
        icu::UnicodeString(static_cast<UChar32>(codePoint)).toUTF8String(encoded);
        const auto last = decodeLast("\xE2\x82" + encoded);
        ASSERT_TRUE(last.isWellFormed);
        ASSERT_EQ(last.codePoint, codePoint);
        ASSERT_EQ(last.length, encoded.size());
    }
}

TEST(Utf8Tests, DecodesTheLastByteAloneIfNoCharacterEndsThere) {
    for (const std::string_view bytes :
         {"\x80", "a\x80", "\xC3", "a\xE2\x82", "\x80\x80\x80\x80\x80", "\xC3\xA9\xA9"}) {
        const auto last = decodeLast(bytes);
        EXPECT_FALSE(last.isWellFormed);
        EXPECT_EQ(last.length, 1U);
    }
}

} // namespace
