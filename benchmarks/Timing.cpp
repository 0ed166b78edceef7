#include "benchmarks/Timing.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>

namespace benchmarks {

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::vector<double> medianTimes(const std::vector<Contender>& contenders) {
    std::size_t rounds = 0;
    for (const Contender& contender : contenders) {
        rounds = std::max(rounds, contender.rounds);
        // Warm-up: the first run has cold code and data.
        static_cast<void>(contender.run());
    }
    std::vector<std::vector<double>> times(contenders.size());
    std::vector<std::size_t> order(contenders.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::mt19937_64 random(1); // NOLINT(*-msc51-cpp): the same orders on every run
    for (std::size_t round = 0; round < rounds; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        for (const std::size_t i : order) {
            if (round < contenders[i].rounds) {
                times[i].push_back(contenders[i].run());
            }
        }
    }
    std::vector<double> medians;
    medians.reserve(times.size());
    for (const auto& ofOne : times) {
        medians.push_back(median(ofOne));
    }
    return medians;
}

} // namespace benchmarks
