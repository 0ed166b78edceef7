#pragma once

#include "Foundation/Interface.h"

#import <AppKit/AppKit.h>

// What @autoreleasepool is made of; an object can hold a pool only with these.
extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace testing_support {

/// The application object and its event loop on the thread of a test, turned by hand. What the test
/// autoreleases goes with this object: stand first among the members.
class AppKitLoop : foundation::Pinned {
  public:
    AppKitLoop() { [NSApplication sharedApplication]; }

    ~AppKitLoop() { objc_autoreleasePoolPop(pool_); }

    /// Handles what has arrived, and what arrives within a hundredth of a second.
    static void turn() {
        @autoreleasepool {
            NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:0.01];
            while (NSEvent* const event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                                             untilDate:end
                                                                inMode:NSDefaultRunLoopMode
                                                               dequeue:YES]) {
                [NSApp sendEvent:event];
            }
        }
    }

  private:
    void* pool_ = objc_autoreleasePoolPush();
};

} // namespace testing_support
