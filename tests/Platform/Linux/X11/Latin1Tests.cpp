#include "Platform/Linux/X11/Latin1.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using platform::latin1FromUtf8;
using platform::utf8FromLatin1;

TEST(Latin1Tests, BringsEveryByteThroughUtf8AndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    const auto utf8 = utf8FromLatin1(all);
    EXPECT_EQ(utf8.size(), 128U + 2 * 128U);
    EXPECT_EQ(utf8.view().substr(128, 4), "\xC2\x80\xC2\x81");
    EXPECT_EQ(utf8.view().substr(utf8.size() - 2), "\xC3\xBF");
    EXPECT_EQ(latin1FromUtf8(utf8.view()).view(), all);
}

TEST(Latin1Tests, PutsAQuestionMarkForEachCharacterThatLatin1HasNot) {
    EXPECT_EQ(latin1FromUtf8("a\xC4\x80\xE2\x82\xAC\xF0\x9F\x8D\x9Ez").view(), "a???z");
}

TEST(Latin1Tests, KeepsAnEmptyText) {
    EXPECT_TRUE(utf8FromLatin1("").empty());
    EXPECT_TRUE(latin1FromUtf8("").empty());
}

} // namespace
