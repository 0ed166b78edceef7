#pragma once

#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"
#include "Foundation/Threads.h"
#include "Foundation/Value.h"
#include "Foundation/WeakReference.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace foundation {

/// What is posted: a name and an optional value.
struct Notification {
    std::string name;
    std::optional<Value> object;
};

/// Notifies observers by name of what has happened elsewhere in the program. They run on the main
/// thread in the order of their registration: before post() returns if it is called there, later if
/// it is called from another thread.
///
/// post() may be called from any thread while the center exists; everything else is main thread
/// only.
class NotificationCenter : Pinned {
  public:
    using Handler = std::function<void(const Notification&)>;

    /// `mainThread` outlives the center.
    explicit NotificationCenter(MainThread& mainThread) : mainThread_(mainThread) {}

    /// The observer stays until it is removed. The handler holds weakly what may not outlive it.
    ObserverToken addObserver(std::string_view name, Handler handler);

    /// Does nothing if the observer is already gone.
    void removeObserver(ObserverToken token);

    void post(Notification notification);

    /// How many observers there are, whatever their names.
    [[nodiscard]] std::size_t observerCount() const { return observers_.size(); }

  private:
    MainThread& mainThread_;
    ObserverList<const Notification&> observers_;
    WeakReferenceSource<NotificationCenter> self_{this};
};

} // namespace foundation
