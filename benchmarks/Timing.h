#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace benchmarks {

/// One way of doing a thing. `run` does it once and returns how long the part that counts took, in
/// seconds.
struct Contender {
    std::function<double()> run;
    std::size_t rounds;
};

/// Runs the contenders in turn, in a new order each round, each for as many rounds as it asks for,
/// so that all see the same moods of the machine. The median time of each, in their order.
[[nodiscard]] std::vector<double> medianTimes(const std::vector<Contender>& contenders);

[[nodiscard]] double median(std::vector<double> values);

/// Seconds since some fixed moment.
[[nodiscard]] double now();

/// How long a call of `action` takes, in seconds.
template <typename Action>
double timeOf(const Action& action) {
    const double begin = now();
    action();
    return now() - begin;
}

} // namespace benchmarks
