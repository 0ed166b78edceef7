#pragma once

#include <cstddef>
#include <string>

namespace testing_support {

/// A text of exactly `size` bytes in lines of 31 letters, of which no two neighbours are alike, so
/// that lost, duplicated and swapped pieces show.
inline std::string generatedText(std::size_t size) {
    constexpr std::size_t lineLength = 32;
    constexpr std::size_t letterCount = 26;
    std::string text(size, '\n');
    for (std::size_t i = 0; i < size; ++i) {
        if (i % lineLength != lineLength - 1) {
            text[i] = static_cast<char>('a' + (i / lineLength + i) % letterCount);
        }
    }
    return text;
}

} // namespace testing_support
