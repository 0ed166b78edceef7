#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace benchmarks {

struct Pcre2Payload {
    std::string html;
    std::string plainText;
    std::int64_t stickyCount = 0;
};

/// The obvious implementation with PCRE2's compiled expressions and std::string.
[[nodiscard]] Pcre2Payload convertWithPcre2(std::string_view text);

} // namespace benchmarks
