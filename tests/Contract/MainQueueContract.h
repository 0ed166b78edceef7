#pragma once

#include "Foundation/Interface.h"
#include "Platform/MainQueue.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace contract {

/// A main queue and a way to run it.
class MainQueueBackend : public foundation::Interface {
  public:
    virtual platform::MainQueue& queue() = 0;
    /// Runs the queue until the condition holds or `limit` has passed.
    virtual bool runUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds limit) = 0;
};

class MainQueueContract : public testing::TestWithParam<BackendMaker<MainQueueBackend>> {
  protected:
    std::shared_ptr<platform::WorkItem> note(char mark) {
        return std::make_shared<platform::WorkItem>([this, mark] { notes_ += mark; });
    }

    bool runUntilNoted(std::size_t count) {
        return backend_->runUntil([&] { return notes_.size() >= count; },
                                  testing_support::patience);
    }

    std::unique_ptr<MainQueueBackend> backend_ = GetParam().make();
    platform::MainQueue& queue_ = backend_->queue();
    std::string notes_;
};

} // namespace contract
