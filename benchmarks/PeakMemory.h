#pragma once

#include <cstddef>
#include <functional>
#include <optional>

namespace benchmarks {

/// How many bytes of memory the process held more while `action` ran, at the worst moment, than
/// before it. `action` runs in a child process of its own. None where the system does not tell.
[[nodiscard]] std::optional<std::size_t> peakMemoryOf(const std::function<void()>& action);

} // namespace benchmarks
