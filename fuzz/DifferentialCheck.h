#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Everything that a conversion of one text yields.
struct Conversion {
    std::vector<std::string> lines;
    std::string html;
    std::string plainText;
    std::int64_t stickyCount = 0;
};

/// Converts a text in well-formed UTF-8.
using Converter = std::function<Conversion(std::string_view text)>;

/// The conversion of the Text folder.
[[nodiscard]] Conversion convertFast(std::string_view text);

/// Repairs the bytes in both ways, converts them with `converter` and with the reference, and
/// compares everything byte for byte. None when they agree; otherwise a report of several lines:
/// which part differs, and the two parts and the bytes as hexadecimal dumps.
[[nodiscard]] std::optional<std::string> findDifference(std::string_view bytes,
                                                        const Converter& converter);

/// Hands the bytes as they are to every function of the Text folder, for a sanitizer to watch.
void exerciseOnRawBytes(std::string_view bytes);

} // namespace fuzz
