#pragma once

#include <string_view>

/// The fixed parts of the document, byte for byte as a spreadsheet program writes them: readers of
/// the clipboard recognise the document by them, mixed quotation marks and indents included.
namespace text::sheet_fragment {

inline constexpr std::string_view head = "<meta charset='utf-8'>\n"
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
                                         "    ";

inline constexpr std::string_view rowStart =
    "<tr style='height: 20px'>\n"
    "    <td class='s0' dir='ltr' style='text-align: left; padding: 2px 3px;'>";

inline constexpr std::string_view rowEnd = "</td>\n"
                                           "</tr>";

inline constexpr std::string_view tableEndAndGridDataOpening =
    "\n"
    "</table>\n"
    "<script type=\"application/json\" id=\"grid-data\">\n";

inline constexpr std::string_view gridDataClosingAndAnalyticsDataOpening =
    "\n"
    "</script>\n"
    "<script type=\"application/json\" id=\"analytics-data\">\n";

inline constexpr std::string_view documentEnd = "\n"
                                                "</script>";

inline constexpr std::string_view gridJsonStart = "{\n"
                                                  "    \"rowCount\": ";

inline constexpr std::string_view gridJsonEnd = ",\n"
                                                "    \"columnCount\": 1,\n"
                                                "    \"frozenRowCount\": 0,\n"
                                                "    \"frozenColumnCount\": 0,\n"
                                                "    \"hideGridlines\": true,\n"
                                                "    \"rowHeightCache\": {},\n"
                                                "    \"columnWidthCache\": {}\n"
                                                "}";

inline constexpr std::string_view analyticsJsonStart = "{\n"
                                                       "    \"event\": \"tabular_data_parsed\",\n"
                                                       "    \"properties\": {\n"
                                                       "        \"children\": {\n"
                                                       "            \"grid_text\": ";

inline constexpr std::string_view analyticsJsonMiddle =
    "\n"
    "        },\n"
    "        \"columns_count\": 1,\n"
    "        \"source\": \"GoogleSpreadsheet\",\n"
    "        \"rows_count\": ";

inline constexpr std::string_view analyticsJsonEnd = ",\n"
                                                     "        \"format\": \"html\",\n"
                                                     "        \"type\": \"spreadsheet\"\n"
                                                     "    }\n"
                                                     "}";

} // namespace text::sheet_fragment
