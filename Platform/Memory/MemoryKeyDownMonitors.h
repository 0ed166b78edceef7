#pragma once

#include "Platform/KeyDownMonitors.h"
#include "Platform/Memory/Journal.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

/// Key presses that a test types. Main thread only.
class MemoryKeyDownMonitors final : public KeyDownMonitors, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override {
        note("add monitor");
        const foundation::ObserverToken token{nextToken_++};
        monitors_.push_back({token, std::make_shared<const Handler>(std::move(handler))});
        return token;
    }

    /// Does nothing if the monitor is already gone.
    void removeMonitor(foundation::ObserverToken token) override {
        note("remove monitor");
        std::erase_if(monitors_, [token](const Monitor& one) { return one.token == token; });
    }

    /// Presses a key in a window of the program. Each monitor, oldest first, gets what the one
    /// before it let through. Returns what the window gets; none if a monitor swallowed the key.
    std::optional<KeyEvent> deliver(KeyEvent event) {
        // A copy: a handler may remove monitors, its own included, while it runs.
        const std::vector<Monitor> atStart = monitors_;
        std::optional<KeyEvent> left = event;
        for (const Monitor& monitor : atStart) {
            if (isInstalled(monitor.token)) {
                left = (*monitor.handler)(*left);
            }
            if (!left) {
                break;
            }
        }
        return left;
    }

    /// How many monitors are installed.
    [[nodiscard]] std::size_t monitorCount() const { return monitors_.size(); }

  private:
    struct Monitor {
        foundation::ObserverToken token;
        std::shared_ptr<const Handler> handler;
    };

    [[nodiscard]] bool isInstalled(foundation::ObserverToken token) const {
        return std::any_of(monitors_.begin(), monitors_.end(), [token](const Monitor& one) {
            return one.token == token;
        });
    }

    std::vector<Monitor> monitors_;
    std::uint64_t nextToken_ = 1;
};

} // namespace platform
