#include "Text/SheetDocument.h"
#include "Text/SheetFragments.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using text::ConversionPayload;
namespace fragment = text::sheet_fragment;

ConversionPayload document(const std::vector<std::string_view>& lines) {
    return text::makeSheetDocument(text::LineList::of(lines));
}

std::string html(const std::vector<std::string_view>& lines) {
    return std::string(document(lines).html.view());
}

std::string plainText(const std::vector<std::string_view>& lines) {
    return std::string(document(lines).plainText.view());
}

constexpr std::string_view documentOfBuyMilk =
    "<meta charset='utf-8'>\n"
    "<google-sheets-html-origin>\n"
    "<style type='text/css'>\n"
    "    .s0 {\n"
    "        font-family: Arial;\n"
    "        font-size: 14px;\n"
    "        white-space: pre-wrap;\n"
    "        background: rgb(255, 255, 255);\n"
    "        vertical-align: bottom;\n"
    "    }\n"
    "    td {\n"
    "        border: 1px solid #ccc;\n"
    "        overflow: hidden;\n"
    "        padding: 2px 3px;\n"
    "        vertical-align: middle;\n"
    "        font-family: Arial;\n"
    "    }\n"
    "    table {\n"
    "        border-collapse: collapse;\n"
    "        table-layout: fixed;\n"
    "        width: 100%;\n"
    "    }\n"
    "</style>\n"
    "<table data-sheets-root=\"1\">\n"
    "    <tr style='height: 20px'>\n"
    "    <td class='s0' dir='ltr' style='text-align: left; padding: 2px 3px;'>Buy milk</td>\n"
    "</tr>\n"
    "</table>\n"
    "<script type=\"application/json\" id=\"grid-data\">\n"
    "{\n"
    "    \"rowCount\": 1,\n"
    "    \"columnCount\": 1,\n"
    "    \"frozenRowCount\": 0,\n"
    "    \"frozenColumnCount\": 0,\n"
    "    \"hideGridlines\": true,\n"
    "    \"rowHeightCache\": {},\n"
    "    \"columnWidthCache\": {}\n"
    "}\n"
    "</script>\n"
    "<script type=\"application/json\" id=\"analytics-data\">\n"
    "{\n"
    "    \"event\": \"tabular_data_parsed\",\n"
    "    \"properties\": {\n"
    "        \"children\": {\n"
    "            \"grid_text\": 1\n"
    "        },\n"
    "        \"columns_count\": 1,\n"
    "        \"source\": \"GoogleSpreadsheet\",\n"
    "        \"rows_count\": 1,\n"
    "        \"format\": \"html\",\n"
    "        \"type\": \"spreadsheet\"\n"
    "    }\n"
    "}\n"
    "</script>";

TEST(SheetDocumentTests, HasFragmentsOfKnownSizes) {
    EXPECT_EQ(fragment::head.size(), 551U);
    EXPECT_EQ(fragment::rowStart.size(), 99U);
    EXPECT_EQ(fragment::rowEnd.size(), 11U);
    EXPECT_EQ(fragment::tableEndAndGridDataOpening.size(), 58U);
    EXPECT_EQ(fragment::gridDataClosingAndAnalyticsDataOpening.size(), 64U);
    EXPECT_EQ(fragment::documentEnd.size(), 10U);
    EXPECT_EQ(fragment::gridJsonStart.size(), 18U);
    EXPECT_EQ(fragment::gridJsonEnd.size(), 158U);
    EXPECT_EQ(fragment::analyticsJsonStart.size(), 105U);
    EXPECT_EQ(fragment::analyticsJsonMiddle.size(), 101U);
    EXPECT_EQ(fragment::analyticsJsonEnd.size(), 65U);
}

TEST(SheetDocumentTests, WritesTheWholeDocumentForOneLine) {
    const ConversionPayload payload = document({"Buy milk"});
    EXPECT_EQ(payload.html.view(), documentOfBuyMilk);
    EXPECT_EQ(std::ranges::count(payload.html.view(), '\n'), 53);
    EXPECT_EQ(payload.plainText.view(), "Buy milk");
    EXPECT_EQ(payload.stickyCount, 1);
}

TEST(SheetDocumentTests, WritesATableWithoutRowsForNoLines) {
    const ConversionPayload payload = document({});
    const std::string expected =
        std::string(fragment::head) + std::string(fragment::tableEndAndGridDataOpening) +
        std::string(fragment::gridJsonStart) + "0" + std::string(fragment::gridJsonEnd) +
        std::string(fragment::gridDataClosingAndAnalyticsDataOpening) +
        std::string(fragment::analyticsJsonStart) + "0" +
        std::string(fragment::analyticsJsonMiddle) + "0" + std::string(fragment::analyticsJsonEnd) +
        std::string(fragment::documentEnd);
    EXPECT_EQ(payload.html.view(), expected);
    EXPECT_EQ(payload.plainText.view(), "");
    EXPECT_EQ(payload.stickyCount, 0);
}

TEST(SheetDocumentTests, TakesBlankLinesForNone) {
    const ConversionPayload payload = document({"", " ", "\t\u3000\n"});
    EXPECT_EQ(payload.html.view(), document({}).html.view());
    EXPECT_EQ(payload.stickyCount, 0);
}

TEST(SheetDocumentTests, DropsBlankLinesAndKeepsTheOthersAsTheyAre) {
    const ConversionPayload payload = document({"", " a ", "\u00A0", "b", ""});
    EXPECT_EQ(payload.plainText.view(), " a \nb");
    EXPECT_EQ(payload.stickyCount, 2);
    EXPECT_EQ(payload.html.view(), html({" a ", "b"}));
}

TEST(SheetDocumentTests, SeparatesRowsBySingleLineFeeds) {
    const std::string row = std::string(fragment::rowStart) + "x" + std::string(fragment::rowEnd);
    const std::string text = html({"x", "x", "x"});
    EXPECT_NE(text.find(std::string(fragment::head) + row + "\n" + row + "\n" + row + "\n</table>"),
              std::string::npos);
    EXPECT_NE(text.find("\"rowCount\": 3,"), std::string::npos);
    EXPECT_NE(text.find("\"grid_text\": 3\n"), std::string::npos);
    EXPECT_NE(text.find("\"rows_count\": 3,"), std::string::npos);
    EXPECT_EQ(plainText({"x", "x", "x"}), "x\nx\nx");
}

TEST(SheetDocumentTests, EscapesMarkupInCellsAndNotInThePlainText) {
    constexpr std::string_view line = "Tom & Jerry <3 \"quotes\" 'x'";
    EXPECT_NE(html({line}).find(">Tom &amp; Jerry &lt;3 &quot;quotes&quot; &#39;x&#39;</td>"),
              std::string::npos);
    EXPECT_EQ(plainText({line}), line);
}

TEST(SheetDocumentTests, EscapesAnEntityLikeAnyText) {
    EXPECT_NE(html({"&amp;"}).find(">&amp;amp;</td>"), std::string::npos);
}

TEST(SheetDocumentTests, WritesTheCountWithoutGrouping) {
    const std::vector<std::string_view> lines(12'345, "x");
    EXPECT_NE(html(lines).find("\"rowCount\": 12345,"), std::string::npos);
}

TEST(SheetDocumentTests, AgreesWithTheReferenceOnLinesOfEveryLength) {
    std::vector<std::string> lines;
    for (std::size_t length = 0; length < 200; ++length) {
        lines.emplace_back(length, 'x');
        lines.emplace_back(length, '"');
        lines.push_back(std::string(length, 'y') + "'");
        lines.push_back("<" + std::string(length, ' '));
    }
    const ConversionPayload payload = document({lines.begin(), lines.end()});
    const reference::Payload expected = reference::generateHTML(lines);
    EXPECT_EQ(payload.html.view(), expected.html);
    EXPECT_EQ(payload.plainText.view(), expected.plainText);
    EXPECT_EQ(payload.stickyCount, expected.stickyCount);
}

TEST(SheetDocumentTests, HasRoomForCellsThatAreAllMarkup) {
    const std::vector<std::string> lines(500, std::string(5000, '"'));
    const ConversionPayload payload = document({lines.begin(), lines.end()});
    const reference::Payload expected = reference::generateHTML(lines);
    EXPECT_TRUE(payload.html.view() == expected.html);
    EXPECT_TRUE(payload.plainText.view() == expected.plainText);
}

TEST(SheetDocumentTests, CopiesZeroBytesAndBrokenOnesAsTheyAre) {
    const std::string_view line("a\0\xFF\xE2\x80", 5);
    EXPECT_EQ(plainText({line}), line);
    EXPECT_NE(html({line}).find(">" + std::string(line) + "</td>"), std::string::npos);
}

} // namespace
