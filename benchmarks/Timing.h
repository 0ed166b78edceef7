#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace benchmarks {

/// One implementation to compare. `run` runs it once and returns the time of the measured part in
/// seconds.
struct Contender {
    std::function<double()> run;
    std::size_t rounds;
};

/// The median time of each contender, in the given order. Runs them in a new order each round, each
/// for as many rounds as it requests, so that load on the machine affects all alike.
[[nodiscard]] std::vector<double> medianTimes(const std::vector<Contender>& contenders);

[[nodiscard]] double median(std::vector<double> values);

/// Monotonic time in seconds.
[[nodiscard]] double now();

/// The duration of a call of `action` in seconds.
template <typename Action>
double timeOf(const Action& action) {
    const double begin = now();
    action();
    return now() - begin;
}

} // namespace benchmarks
