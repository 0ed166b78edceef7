#include "Foundation/NotificationCenter.h"

#include <utility>

namespace foundation {

ObserverToken NotificationCenter::addObserver(std::string_view name, Handler handler) {
    return observers_.add(
        [name = std::string(name), handler = std::move(handler)](const Notification& notification) {
            if (notification.name == name) {
                handler(notification);
            }
        });
}

void NotificationCenter::removeObserver(ObserverToken token) {
    observers_.remove(token);
}

void NotificationCenter::post(Notification notification) {
    if (mainThread_.isMainThread()) {
        observers_.notify(notification);
        return;
    }
    mainThread_.async([self = self_.reference(), notification = std::move(notification)] {
        if (NotificationCenter* center = self.get()) {
            center->observers_.notify(notification);
        }
    });
}

} // namespace foundation
