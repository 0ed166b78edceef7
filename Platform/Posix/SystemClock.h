#pragma once

#include "Platform/Time.h"

#include <chrono>

namespace platform {

/// The system's wall clock. Main thread only.
class SystemClock final : public Clock {
  public:
    [[nodiscard]] foundation::Date now() const override {
        return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    }
};

} // namespace platform
