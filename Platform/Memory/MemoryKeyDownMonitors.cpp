#include "Platform/Memory/MemoryKeyDownMonitors.h"

#include <algorithm>
#include <utility>

namespace platform {

foundation::ObserverToken MemoryKeyDownMonitors::addLocalMonitor(Handler handler) {
    const foundation::ObserverToken token{nextToken_++};
    monitors_.push_back({token, std::make_shared<const Handler>(std::move(handler))});
    return token;
}

void MemoryKeyDownMonitors::removeMonitor(foundation::ObserverToken token) {
    std::erase_if(monitors_, [token](const Monitor& one) { return one.token == token; });
}

std::optional<KeyEvent> MemoryKeyDownMonitors::deliver(KeyEvent event) {
    // A copy: a handler may remove monitors, its own included, and keeps running.
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

bool MemoryKeyDownMonitors::isInstalled(foundation::ObserverToken token) const {
    return std::any_of(monitors_.begin(), monitors_.end(), [token](const Monitor& one) {
        return one.token == token;
    });
}

} // namespace platform
