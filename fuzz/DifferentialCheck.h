#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// The complete result of one conversion.
struct Conversion {
    std::vector<std::string> lines;
    std::string html;
    std::string plainText;
    std::int64_t stickyCount = 0;
};

/// Converts well-formed UTF-8.
using Converter = std::function<Conversion(std::string_view text)>;

/// The conversion in Text/.
[[nodiscard]] Conversion convertFast(std::string_view text);

/// Repairs and converts the bytes with `converter` and with the reference and compares the results
/// byte for byte. Returns nullopt if they are equal, otherwise a report of several lines: which
/// part differs, and hexadecimal dumps of both versions and of the bytes.
[[nodiscard]] std::optional<std::string> findDifference(std::string_view bytes,
                                                        const Converter& converter);

/// Passes the raw bytes to every function in Text/, to be run under a sanitizer.
void exerciseOnRawBytes(std::string_view bytes);

} // namespace fuzz
