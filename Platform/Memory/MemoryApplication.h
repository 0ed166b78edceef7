#pragma once

#include "Platform/Application.h"

#include <functional>
#include <utility>

namespace platform {

/// An application that counts what is asked of it and plays the desktop's requests.
class MemoryApplication final : public Application {
  public:
    void setRequests(Requests requests) override { requests_ = std::move(requests); }

    void activateIgnoringOtherApps() override { ++activationCount_; }

    void terminate() override { isTerminated_ = true; }

    /// What the desktop can ask; empty functions before the program said what they do.
    [[nodiscard]] const Requests& requests() const { return requests_; }

    [[nodiscard]] int activationCount() const { return activationCount_; }

    [[nodiscard]] bool isTerminated() const { return isTerminated_; }

  private:
    Requests requests_;
    int activationCount_ = 0;
    bool isTerminated_ = false;
};

} // namespace platform
