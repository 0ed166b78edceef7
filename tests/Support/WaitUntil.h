#pragma once

#include <chrono>
#include <functional>

namespace testing_support {

inline constexpr std::chrono::milliseconds patience{10'000};

/// Polls `condition` every few milliseconds until it holds or `limit` has passed, and returns
/// whether it holds. `between` runs before each check, for example to run an event loop.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = patience,
               const std::function<void()>& between = {});

} // namespace testing_support
