#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// What a property list may be at most. Thousands of years of settings stay far below it; behind it
/// libplist could be brought to exhaust the memory or the stack.
struct PropertyListBounds {
    static constexpr std::size_t maxFileSize = std::size_t{4} << 20U; ///< In bytes.
    /// Objects, and bytes of texts and data, that reading makes: what is shared counts each time.
    static constexpr std::size_t maxObjects = 400'000;
    static constexpr std::size_t maxContents = std::size_t{16} << 20U;
    static constexpr std::size_t maxDepth = 100;
    static constexpr std::size_t maxXmlContainers = 10'000;
};

/// Whether a binary or XML property list keeps within these bounds. False also for a binary one
/// whose structure is broken or which has texts that libplist does not keep: with zero bytes in
/// them, or with others than ASCII where they claim to be that. True says nothing about whether
/// the rest of it is sound.
[[nodiscard]] bool isWithinPropertyListBounds(std::string_view bytes);

} // namespace platform
