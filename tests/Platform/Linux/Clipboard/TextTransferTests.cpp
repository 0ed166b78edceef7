#include "Platform/Linux/Clipboard/TextTransfer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using foundation::TextBuffer;
using platform::FormatNames;
using platform::PasteboardType;
using platform::TextEncoding;

std::string decoded(std::string_view bytes, TextEncoding encoding) {
    return std::string(platform::decode(TextBuffer(bytes), encoding).view());
}

std::string encoded(std::string_view text, TextEncoding encoding) {
    return std::string(
        platform::encode(std::make_shared<const TextBuffer>(text), encoding)->view());
}

FormatNames accepted(PasteboardType type, const FormatNames& offers) {
    FormatNames names;
    for (const platform::TextFormat& format : platform::acceptable(type, offers)) {
        names.push_back(format.name);
    }
    return names;
}

TEST(TextTransferTests, PrefersUtf8ToUnspecifiedEncodingsToLatin1) {
    EXPECT_EQ(
        accepted(PasteboardType::string,
                 {"TEXT",
                  "STRING",
                  "text/plain",
                  "image/png",
                  "text/html",
                  "text/plain;charset=utf-8",
                  "UTF8_STRING"}),
        (FormatNames{"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING", "TEXT"}));
}

TEST(TextTransferTests, AcceptsOnlyFormatsOfTheRequestedType) {
    EXPECT_EQ(accepted(PasteboardType::html, {"text/plain", "text/html"}),
              FormatNames{"text/html"});
    EXPECT_TRUE(accepted(PasteboardType::string, {"text/html", "image/png"}).empty());
}

TEST(TextTransferTests, AcceptsNoTextBesideAListOfFiles) {
    for (const std::string_view fileList : platform::fileListFormats) {
        EXPECT_TRUE(accepted(PasteboardType::string, {"UTF8_STRING", fileList}).empty());
    }
}

TEST(TextTransferTests, RecognisesAFileAtTheStartOfAnUriList) {
    EXPECT_TRUE(platform::startsWithFile("file:///list.txt\r\n"));
    EXPECT_TRUE(platform::startsWithFile("# a comment\r\n#another\nFILE:/list.txt"));
    EXPECT_FALSE(platform::startsWithFile("https://example.org/file:\r\n"));
    EXPECT_FALSE(platform::startsWithFile("# only a comment"));
    EXPECT_FALSE(platform::startsWithFile("file"));
    EXPECT_FALSE(platform::startsWithFile(""));
}

TEST(TextTransferTests, ReplacesIllFormedUtf8) {
    EXPECT_EQ(decoded("a\xFFz", TextEncoding::utf8), "a\uFFFDz");
}

TEST(TextTransferTests, DecodesTextOfUnspecifiedEncodingAsLatin1UnlessItIsUtf8) {
    EXPECT_EQ(decoded("caf\u00E9", TextEncoding::utf8OrLatin1), "caf\u00E9");
    EXPECT_EQ(decoded("caf\xE9", TextEncoding::utf8OrLatin1), "caf\u00E9");
    EXPECT_EQ(decoded("", TextEncoding::utf8OrLatin1), "");
}

TEST(TextTransferTests, ConvertsEveryLatin1ByteToUtf8AndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
    }
    const std::string utf8 = decoded(all, TextEncoding::latin1);
    EXPECT_EQ(utf8.size(), 128U + 2 * 128U);
    EXPECT_EQ(utf8.substr(128, 4), "\u0080\u0081");
    EXPECT_EQ(utf8.substr(utf8.size() - 2), "\u00FF");
    EXPECT_EQ(encoded(utf8, TextEncoding::latin1), all);
}

TEST(TextTransferTests, EncodesCharactersThatLatin1LacksAsQuestionMarks) {
    EXPECT_EQ(encoded("a\u0100\u20AC\U0001F35Ez", TextEncoding::latin1), "a???z");
}

TEST(TextTransferTests, KeepsEmptyTextInLatin1) {
    EXPECT_EQ(decoded("", TextEncoding::latin1), "");
    EXPECT_EQ(encoded("", TextEncoding::latin1), "");
}

TEST(TextTransferTests, EncodesUtf8WithoutACopy) {
    const auto text = std::make_shared<const TextBuffer>("caf\u00E9");
    EXPECT_EQ(platform::encode(text, TextEncoding::utf8), text);
}

} // namespace
