#include "Text/LineList.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace text {

namespace {

/// Longer than most lines.
constexpr std::size_t scanSize = 48;

constexpr auto positions = [] {
    std::array<std::uint8_t, scanSize> values{};
    std::iota(values.begin(), values.end(), std::uint8_t{0});
    return values;
}();

bool isLineBreak(char byte) {
    return byte == '\n' || byte == '\r';
}

/// The position of the first line break in a block, or more than its size. The loop has no branch,
/// so compilers compare many bytes at once.
std::size_t findInBlock(const char* block) {
    std::uint8_t first = 0xFF;
    for (std::size_t i = 0; i < scanSize; ++i) {
        const auto isBreak = static_cast<std::uint8_t>((block[i] == '\n') | (block[i] == '\r'));
        const auto mask = static_cast<std::uint8_t>(isBreak - 1U);
        first = std::min(first, static_cast<std::uint8_t>(positions[i] | mask));
    }
    return first;
}

} // namespace

std::size_t findLineBreak(std::string_view text) {
    std::size_t at = 0;
    for (; text.size() - at >= scanSize; at += scanSize) {
        const std::size_t found = findInBlock(text.data() + at);
        if (found < scanSize) {
            return at + found;
        }
    }
    while (at < text.size() && !isLineBreak(text[at])) {
        ++at;
    }
    return at;
}

std::int64_t LineList::size() const {
    std::int64_t count = 0;
    forEachLine(text(), [&count](std::string_view) { ++count; });
    return count;
}

} // namespace text
