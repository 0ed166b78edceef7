#include "fuzz/DocumentGenerator.h"

#include <array>

namespace fuzz {

namespace {

constexpr auto whiteSpace = std::to_array<std::string_view>({
    " ",
    " ",
    " ",
    "\t",
    "\v",
    "\f",
    "\u0085",
    "\u00A0",
    "\u1680",
    "\u2000",
    "\u2007",
    "\u200A",
    "\u2028",
    "\u2029",
    "\u202F",
    "\u205F",
    "\u3000",
});

constexpr auto nearWhiteSpace = std::to_array<std::string_view>({
    "\u200B",
    "\uFEFF",
    "\u180E",
    "\x1C",
    "\x1F",
    "\u2060",
    "\u200D",
});

constexpr auto bullets = std::to_array<std::string_view>({
    "\u2022",
    "-",
    "*",
    "\u00B7",
    "+",
    "\u2192",
    "\u2043",
    "\u2023",
    "\u204C",
    "\u204D",
    "\u25CF",
    "_",
    "#",
    "\u2012",
});

constexpr auto digits = std::to_array<std::string_view>({
    "0",
    "1",
    "2",
    "7",
    "9",
    "\u0661",
    "\u06F9",
    "\u0967",
    "\u0ED9",
    "\uFF15",
    "\U0001D7D8",
    "\U0001D7FF",
    "\U00011F59",
    "\U0001E4F0",
    "\u00B2",
    "\u2160",
    "\u4E00",
});

constexpr auto marks = std::to_array<std::string_view>({
    ".",
    ".",
    "-",
    "\u2013",
    "\u2014",
    ":",
    ":",
    ")",
    "\u2010",
    "\u2212",
    "\uFF0E",
    "",
});

constexpr auto words = std::to_array<std::string_view>({
    "milk",
    "Buy",
    "a",
    "&",
    "<",
    ">",
    "\"",
    "'",
    "&amp;",
    "<b>x</b>",
    "caf\u00E9",
    "\u7C73",
    "\u03B1\u03B2\u03B3",
    "\U0001F600",
    "\U0001F468\u200D\U0001F469",
    "e\u0301",
    "1.",
    "2 -",
    "3:",
    "0123456789abcdef0123456789abcdef",
    "\\",
    "{rows}",
    "{cell}",
    "{count}",
    "]]>",
    "</script>",
});

constexpr auto lineBreaks =
    std::to_array<std::string_view>({"\n", "\n", "\n", "\r", "\r\n", "\r\n", "\n\r", "\r\r\n"});

constexpr auto brokenBytes = std::to_array<std::string_view>({
    "\x80",
    "\xFF",
    "\xC3",
    "\xE2\x80",
    "\xF0\x9F\x98",
    "\xED\xA0\x80",
    "\xC0\xAF",
    "\xF4\x90",
});

} // namespace

std::string DocumentGenerator::run(std::span<const std::string_view> choices, std::size_t longest) {
    std::string result;
    for (std::size_t left = below(longest + 1); left > 0; --left) {
        result += oneOf(choices);
    }
    return result;
}

std::string DocumentGenerator::line() {
    std::string line = run(whiteSpace, 2);
    for (std::size_t prefixes = below(3); prefixes > 0; --prefixes) {
        if (oneIn(2)) {
            line += oneOf(bullets);
        } else {
            line += run(digits, oneIn(50) ? 40 : 3);
            line += run(whiteSpace, 1);
            line += oneOf(marks);
        }
        line += run(whiteSpace, 2);
    }
    for (std::size_t left = below(5); left > 0; --left) {
        line += oneOf(words);
        line += run(whiteSpace, 1);
    }
    if (oneIn(10)) {
        line += oneOf(nearWhiteSpace);
    }
    if (oneIn(20)) {
        line.insert(below(line.size() + 1), oneOf(brokenBytes));
    }
    if (oneIn(30)) {
        line.insert(below(line.size() + 1), 1, '\0');
    }
    return line + run(whiteSpace, 1);
}

std::string DocumentGenerator::next() {
    std::string document;
    for (std::size_t left = below(6); left > 0; --left) {
        document += line();
        document += run(lineBreaks, 2);
    }
    return document;
}

} // namespace fuzz
