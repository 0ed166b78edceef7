#pragma once

#include "Platform/Linux/Worker.h"

#include <functional>
#include <utility>
#include <vector>

namespace testing_support {

/// A worker that does nothing by itself: what it is given is done when somebody waits for it.
class DeferringWorker final : public platform::Worker {
  public:
    void perform(std::function<void()> work) override { work_.push_back(std::move(work)); }

    void waitUntilDone() override {
        for (const auto& piece : std::exchange(work_, {})) {
            piece();
        }
    }

    [[nodiscard]] std::size_t waitingCount() const { return work_.size(); }

  private:
    std::vector<std::function<void()>> work_;
};

} // namespace testing_support
