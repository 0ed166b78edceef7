#pragma once

#include "Platform/MainQueue.h"

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

namespace platform {

/// The system's main queue, which the main thread's event loop runs, even while a menu or an alert
/// is open.
class MacMainQueue final : public MainQueue {
  public:
    [[nodiscard]] bool isMainThread() const override { return [NSThread isMainThread]; }

    void async(std::function<void()> work) override {
        dispatch_async(dispatch_get_main_queue(), ^{
          work();
        });
    }

    void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) override {
        const std::chrono::nanoseconds nanoseconds = delay;
        const dispatch_time_t due = dispatch_time(DISPATCH_TIME_NOW, nanoseconds.count());
        dispatch_after(due, dispatch_get_main_queue(), ^{
          item->perform();
        });
    }
};

} // namespace platform
