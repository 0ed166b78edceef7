#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace benchmarks {

/// The peak growth of resident memory during `action`, in bytes. Runs `action` in a child process.
/// nullopt if the system does not report it.
[[nodiscard]] std::optional<std::size_t> peakMemoryOf(const std::function<void()>& action);

} // namespace benchmarks
