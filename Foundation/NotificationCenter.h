#pragma once

#include "Foundation/Interface.h"
#include "Foundation/MainThread.h"
#include "Foundation/ObserverList.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace foundation {

/// What is posted: a name, and with it a value or none.
struct Notification {
    std::string name;
    std::optional<Value> object;
};

/// Tells observers by name what has happened elsewhere in the program. They run on the main thread,
/// in the order of their registration: before post() returns when it is called there, later when it
/// is called from another thread.
///
/// post() may be called from any thread for as long as the center exists; everything else belongs
/// to the main thread.
class NotificationCenter : Pinned {
  public:
    using Handler = std::function<void(const Notification&)>;

    /// `mainThread` outlives the center.
    explicit NotificationCenter(MainThread& mainThread) : mainThread_(mainThread) {}

    /// The observer stays until it is removed. The handler holds weakly whatever may end before.
    ObserverToken addObserver(std::string_view name, Handler handler);

    /// Does nothing when the observer was removed before.
    void removeObserver(ObserverToken token);

    void post(Notification notification);

    /// How many observers have been added and not removed, whatever their names.
    [[nodiscard]] std::size_t observerCount() const { return observers_.size(); }

  private:
    MainThread& mainThread_;
    ObserverList<const Notification&> observers_;
    WeakReferenceSource<NotificationCenter> self_{this};
};

} // namespace foundation
