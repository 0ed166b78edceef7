#include "benchmarks/DesktopPeer.h"

#include "Text/LineSanitiser.h"
#include "Text/SheetFragments.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

namespace fragment = text::sheet_fragment;

constexpr std::string_view conversion = R"js(
var lines = str(clipboard()).replace(/\r\n?/g, '\n').split('\n');
var kept = [];
var rows = [];
for (var i = 0; i < lines.length; ++i) {
    var line = lines[i].trim();
    line = line.replace(bullet, '').trim();
    for (var j = 0; j < numbers.length; ++j) {
        if (numbers[j].test(line)) {
            line = line.replace(numbers[j], '').trim();
            break;
        }
    }
    if (line === '')
        continue;
    kept.push(line);
    rows.push(rowStart + line.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;')
                             .replace(/"/g, '&quot;').replace(/'/g, '&#39;') + rowEnd);
}
var count = String(rows.length);
var html = head + rows.join('\n') + afterRows + count + afterFirstCount + count +
           afterSecondCount + count + afterThirdCount;
copy('text/plain', kept.join('\n'), 'text/html', html);
)js";

/// Quotes the text as an ASCII literal of the script language.
std::string literal(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', true);
}

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

std::string script() {
    std::string numbers;
    for (const std::string_view pattern : text::numericPrefixPatterns) {
        numbers += "new RegExp(" + literal(std::string(pattern)) + "), ";
    }
    std::string text = "copyq:\nvar bullet = new RegExp(" +
                       literal(std::string(text::bulletPrefixPattern)) + ");\nvar numbers = [" +
                       numbers + "];\n";
    const std::vector<std::pair<std::string, std::string>> constants{
        {"head", std::string(fragment::head)},
        {"rowStart", std::string(fragment::rowStart)},
        {"rowEnd", std::string(fragment::rowEnd)},
        {"afterRows", joined({fragment::tableEndAndGridDataOpening, fragment::gridJsonStart})},
        {"afterFirstCount",
         joined({fragment::gridJsonEnd,
                 fragment::gridDataClosingAndAnalyticsDataOpening,
                 fragment::analyticsJsonStart})},
        {"afterSecondCount", std::string(fragment::analyticsJsonMiddle)},
        {"afterThirdCount", joined({fragment::analyticsJsonEnd, fragment::documentEnd})},
    };
    for (const auto& [name, value] : constants) {
        text += joined({"var ", name, " = ", literal(value), ";\n"});
    }
    return text + std::string(conversion);
}

/// Quotes the text as a value in a configuration file.
std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '\n') {
            result += "\\n";
            continue;
        }
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

} // namespace

void writePeerConfiguration(const std::string& configurationFolder) {
    const std::filesystem::path folder = std::filesystem::path(configurationFolder) / "copyq";
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / "copyq-commands.ini");
    file << "[Commands]\n"
            "1\\Name=Convert\n"
            "1\\Command="
         << quoted(script())
         << "\n"
            "1\\IsGlobalShortcut=true\n"
            "1\\GlobalShortcut=meta+g\n"
            "size=1\n";
    if (!file.flush()) {
        throw std::runtime_error("cannot write CopyQ's configuration");
    }
}

} // namespace benchmarks
