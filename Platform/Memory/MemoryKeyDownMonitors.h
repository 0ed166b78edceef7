#pragma once

#include "Platform/KeyDownMonitors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

/// The key presses of a program in memory, which a test types. Main thread only.
class MemoryKeyDownMonitors final : public KeyDownMonitors {
  public:
    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override;

    /// Does nothing when the monitor was removed before.
    void removeMonitor(foundation::ObserverToken token) override;

    /// The user presses a key in a window of the program. Each monitor, the oldest first, is given
    /// what the one before it let through. What the window gets; none when a monitor swallowed it.
    std::optional<KeyEvent> deliver(KeyEvent event);

    /// How many monitors are installed.
    [[nodiscard]] std::size_t monitorCount() const { return monitors_.size(); }

  private:
    struct Monitor {
        foundation::ObserverToken token;
        std::shared_ptr<const Handler> handler;
    };

    [[nodiscard]] bool isInstalled(foundation::ObserverToken token) const;

    std::vector<Monitor> monitors_;
    std::uint64_t nextToken_ = 1;
};

} // namespace platform
