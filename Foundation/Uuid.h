#pragma once

#include <array>
#include <cstdint>

namespace foundation {

/// A universally unique identifier: 16 bytes, equal only to its copies. Any thread.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh random identifier (version 4).
    [[nodiscard]] static Uuid random();

    bool operator==(const Uuid&) const = default;
};

} // namespace foundation
