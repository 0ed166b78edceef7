#include "Tools/StreamConversion.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using tools::OutputFormat;
using tools::StreamConversion;
using namespace std::string_view_literals;

constexpr std::array allFormats{
    OutputFormat::html, OutputFormat::plainText, OutputFormat::count, OutputFormat::json};

/// Every kind of line break, prefix and ill-formed sequence, and no line break at the end.
constexpr std::string_view mixedList =
    "\xEF\xBB\xBF\u2022 Buy milk\r\n\r\n 12. eggs & \"ham\"\n\n\r\r\u2003\u3000- \u2019\xE2\x80\n"
    "\xF0\x9F\r\n\xF0\x9F\x98\x80\xFF\xED\xA0\x80\r\u0663 \u2014 tea\t\n\n-\n3.\r\n3. \r\n\0\x80 "
    "<b>";

std::string expectedOutput(OutputFormat format, std::string_view input) {
    const reference::Payload payload = reference::convert(reference::repairUtf8(input));
    switch (format) {
    case OutputFormat::html:
        return payload.html;
    case OutputFormat::plainText:
        return payload.plainText;
    case OutputFormat::count:
        return std::to_string(payload.stickyCount) + "\n";
    case OutputFormat::json:
        break;
    }
    return "{\"html\":" + nlohmann::json(payload.html).dump() +
           ",\"plainText\":" + nlohmann::json(payload.plainText).dump() +
           ",\"stickyCount\":" + std::to_string(payload.stickyCount) + "}\n";
}

std::string convertPieces(OutputFormat format, const std::vector<std::string_view>& pieces) {
    std::string output;
    StreamConversion conversion(format, [&output](std::string_view text) { output += text; });
    for (const std::string_view piece : pieces) {
        conversion.add(piece);
    }
    conversion.endLine();
    conversion.finish();
    return output;
}

/// Runs `check` for each format with a function that converts given pieces of a text and expects
/// the output that the whole text has.
void forEachFormat(
    std::string_view input,
    const std::function<void(const std::function<void(const std::vector<std::string_view>&)>&)>&
        check) {
    for (const OutputFormat format : allFormats) {
        const std::string expected = expectedOutput(format, input);
        check([&](const std::vector<std::string_view>& pieces) {
            ASSERT_EQ(convertPieces(format, pieces), expected)
                << "format " << static_cast<int>(format);
        });
    }
}

TEST(StreamConversionTests, GivesTheSameOutputForAListCutInTwoAnywhere) {
    forEachFormat(mixedList, [](const auto& expectSame) {
        for (std::size_t cut = 0; cut <= mixedList.size(); ++cut) {
            SCOPED_TRACE(cut);
            expectSame({mixedList.substr(0, cut), mixedList.substr(cut)});
        }
    });
}

TEST(StreamConversionTests, GivesTheSameOutputForAListCutInThreeAnywhere) {
    forEachFormat(mixedList, [](const auto& expectSame) {
        for (std::size_t first = 0; first <= mixedList.size(); ++first) {
            for (std::size_t second = first; second <= mixedList.size(); ++second) {
                expectSame({mixedList.substr(0, first),
                            mixedList.substr(first, second - first),
                            mixedList.substr(second)});
            }
        }
    });
}

TEST(StreamConversionTests, GivesTheSameOutputForPiecesOfAnySize) {
    std::string input;
    while (input.size() < 3000) {
        input += mixedList;
        input += input.size() % 2 == 0 ? "\n" : "";
    }
    forEachFormat(input, [&input](const auto& expectSame) {
        for (std::size_t size = 1; size <= 130; ++size) {
            SCOPED_TRACE(size);
            std::vector<std::string_view> pieces;
            for (std::size_t at = 0; at < input.size(); at += size) {
                pieces.push_back(std::string_view(input).substr(at, size));
            }
            expectSame(pieces);
        }
    });
}

TEST(StreamConversionTests, ConvertsNoInput) {
    forEachFormat("", [](const auto& expectSame) { expectSame({}); });
}

TEST(StreamConversionTests, ConvertsBlankLines) {
    forEachFormat("\n \r\n\r- \n", [](const auto& expectSame) {
        expectSame({"\n \r", "\n\r- \n"});
    });
}

TEST(StreamConversionTests, StartsALineAfterTheEndOfAFile) {
    std::string output;
    StreamConversion conversion(OutputFormat::plainText,
                                [&output](std::string_view text) { output += text; });
    conversion.add("milk\n- ");
    conversion.endLine();
    conversion.add("2. eggs\xE2");
    conversion.endLine();
    conversion.add("\x80\xA2");
    conversion.endLine();
    conversion.finish();
    EXPECT_EQ(output, "milk\neggs\uFFFD\n\uFFFD\uFFFD");
}

TEST(StreamConversionTests, WritesTheRowsOfTheLinesThatHaveEnded) {
    std::string output;
    StreamConversion conversion(OutputFormat::html,
                                [&output](std::string_view text) { output += text; });
    conversion.add("mi");
    EXPECT_EQ(output, "");
    conversion.add("lk\nbread\neg");
    const std::string expected = reference::convert("milk\nbread").html;
    EXPECT_TRUE(expected.starts_with(output));
    EXPECT_TRUE(output.ends_with("bread"));
}

TEST(StreamConversionTests, WritesInPiecesOfAboutTheSizeOfTheInput) {
    for (const OutputFormat format : {OutputFormat::html, OutputFormat::plainText}) {
        std::size_t longest = 0;
        StreamConversion conversion(format, [&longest](std::string_view text) {
            longest = std::max(longest, text.size());
        });
        for (int i = 0; i < 10'000; ++i) {
            conversion.add("a line of some length\n");
        }
        conversion.endLine();
        conversion.finish();
        EXPECT_LT(longest, 2000U);
    }
}

} // namespace
