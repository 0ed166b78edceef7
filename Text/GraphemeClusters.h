#pragma once

#include <cstdint>
#include <string_view>

namespace text {

/// The number of characters as a user sees them: extended grapheme clusters, a carriage return and
/// line feed together being one. Each ill-formed sequence counts as one U+FFFD. Takes several times
/// as long as a conversion does.
[[nodiscard]] std::int64_t countGraphemeClusters(std::string_view text);

} // namespace text
