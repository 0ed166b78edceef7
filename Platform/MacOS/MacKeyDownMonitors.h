#pragma once

#include "Platform/KeyDownMonitors.h"

#import <AppKit/AppKit.h>

#include <cstdint>
#include <map>

namespace platform {

/// The system's local monitors of key presses, removed with this object. Main thread only.
class MacKeyDownMonitors final : public KeyDownMonitors {
  public:
    MacKeyDownMonitors() = default;

    ~MacKeyDownMonitors() override {
        for (const auto& [token, monitor] : monitors_) {
            [NSEvent removeMonitor:monitor];
        }
    }

    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override {
        const foundation::ObserverToken token{++lastToken_};
        const auto handleEvent = ^NSEvent*(NSEvent* event) {
            const KeyEvent pressed{.keyCode = event.keyCode,
                                   .modifierFlags = {event.modifierFlags}};
            // A copy: the handler may remove its monitor, and this block with it.
            const Handler running = handler;
            return running(pressed) ? event : nil;
        };
        monitors_[token] = [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                                 handler:handleEvent];
        return token;
    }

    void removeMonitor(foundation::ObserverToken token) override {
        if (const auto node = monitors_.extract(token)) {
            [NSEvent removeMonitor:node.mapped()];
        }
    }

  private:
    std::uint64_t lastToken_ = 0;
    std::map<foundation::ObserverToken, id> monitors_;
};

} // namespace platform
