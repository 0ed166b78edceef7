#pragma once

#include <chrono>
#include <functional>

namespace testing_support {

inline constexpr std::chrono::milliseconds patience{10'000};

/// Looks at `condition` again and again, every few milliseconds, until it holds or `limit` is over;
/// returns whether it came to hold. `between` runs before each look, for example to turn an event
/// loop.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = patience,
               const std::function<void()>& between = {});

} // namespace testing_support
