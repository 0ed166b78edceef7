#pragma once

#include "Platform/Linux/Worker.h"

#include <functional>

namespace testing_support {

/// A worker that has done what it is given when it returns.
class InlineWorker final : public platform::Worker {
  public:
    void perform(std::function<void()> work) override { work(); }

    void waitUntilDone() override {}
};

} // namespace testing_support
