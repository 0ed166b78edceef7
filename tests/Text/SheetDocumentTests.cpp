#include "Text/SheetDocument.h"
#include "Text/SheetFragments.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using text::ConversionPayload;
namespace fragment = text::sheet_fragment;

ConversionPayload document(std::string_view text) {
    return text::makeSheetDocument(text::LineList(foundation::TextBuffer(text)));
}

std::string html(std::string_view text) {
    return std::string(document(text).html.view());
}

std::string plainText(std::string_view text) {
    return std::string(document(text).plainText.view());
}

void expectSameAsReference(std::string_view text) {
    const ConversionPayload payload = document(text);
    const reference::Payload expected = reference::convert(std::string(text));
    EXPECT_TRUE(payload.html.view() == expected.html);
    EXPECT_TRUE(payload.plainText.view() == expected.plainText);
    EXPECT_EQ(payload.stickyCount, expected.stickyCount);
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

TEST(SheetDocumentTests, FragmentsHaveTheExpectedSizes) {
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
    const ConversionPayload payload = document("Buy milk");
    EXPECT_EQ(payload.html.view(), documentOfBuyMilk);
    EXPECT_EQ(std::ranges::count(payload.html.view(), '\n'), 53);
    EXPECT_EQ(payload.plainText.view(), "Buy milk");
    EXPECT_EQ(payload.stickyCount, 1);
}

TEST(SheetDocumentTests, WritesATableWithoutRowsForNoLines) {
    const ConversionPayload payload = document("");
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

TEST(SheetDocumentTests, DropsBlankLines) {
    const ConversionPayload payload = document("\n a \n\u00A0\n- \nb\n");
    EXPECT_EQ(payload.plainText.view(), "a\nb");
    EXPECT_EQ(payload.stickyCount, 2);
    EXPECT_EQ(payload.html.view(), html("a\nb"));
    EXPECT_EQ(html("\n \n\t\u3000\r"), html(""));
}

TEST(SheetDocumentTests, SeparatesRowsWithSingleLineFeeds) {
    const std::string row = std::string(fragment::rowStart) + "x" + std::string(fragment::rowEnd);
    const std::string text = html("x\nx\nx");
    EXPECT_NE(text.find(std::string(fragment::head) + row + "\n" + row + "\n" + row + "\n</table>"),
              std::string::npos);
    EXPECT_NE(text.find("\"rowCount\": 3,"), std::string::npos);
    EXPECT_NE(text.find("\"grid_text\": 3\n"), std::string::npos);
    EXPECT_NE(text.find("\"rows_count\": 3,"), std::string::npos);
    EXPECT_EQ(plainText("x\nx\nx"), "x\nx\nx");
}

TEST(SheetDocumentTests, EscapesMarkupInCellsButNotInThePlainText) {
    constexpr std::string_view line = "Tom & Jerry <3 \"quotes\" 'x'";
    EXPECT_NE(html(line).find(">Tom &amp; Jerry &lt;3 &quot;quotes&quot; &#39;x&#39;</td>"),
              std::string::npos);
    EXPECT_EQ(plainText(line), line);
}

TEST(SheetDocumentTests, EscapesTheAmpersandOfAnEntity) {
    EXPECT_NE(html("&amp;").find(">&amp;amp;</td>"), std::string::npos);
}

TEST(SheetDocumentTests, WritesTheCountWithoutThousandsSeparators) {
    std::string text;
    for (int i = 0; i < 12'345; ++i) {
        text += "x\n";
    }
    EXPECT_NE(html(text).find("\"rowCount\": 12345,"), std::string::npos);
}

TEST(SheetDocumentTests, AgreesWithTheReferenceOnLinesOfEveryLength) {
    std::string text;
    for (std::size_t length = 0; length < 200; ++length) {
        text += std::string(length, 'x') + "\n" + std::string(length, '"') + "\r\n";
        text += std::string(length, 'y') + "'\r<" + std::string(length, ' ') + "\n";
    }
    expectSameAsReference(text);
}

TEST(SheetDocumentTests, GrowsForManyShortLinesAndForCellsOfMarkupOnly) {
    std::string shortLines;
    for (int i = 0; i < 20'000; ++i) {
        shortLines += "x\n";
    }
    expectSameAsReference(shortLines);
    std::string markup;
    for (int i = 0; i < 500; ++i) {
        markup += std::string(5000, '"') + "\n";
    }
    expectSameAsReference(markup);
}

TEST(SheetDocumentTests, KeepsZeroBytesAndIllFormedUtf8) {
    const std::string_view line("a\0\xFF\xE2\x80", 5);
    EXPECT_EQ(plainText(line), line);
    EXPECT_NE(html(line).find(">" + std::string(line) + "</td>"), std::string::npos);
}

} // namespace
