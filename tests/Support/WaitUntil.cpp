#include "tests/Support/WaitUntil.h"

#include <thread>

namespace testing_support {

bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit,
               const std::function<void()>& between) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (true) {
        if (between) {
            between();
        }
        if (condition()) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

} // namespace testing_support
