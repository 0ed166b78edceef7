#pragma once

#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"

#include <functional>
#include <utility>

namespace foundation {

/// An object whose published properties announce each coming change before it happens, for views
/// that are bound to it. One thread only.
class ObservableObject : Pinned {
  public:
    ObservableObject() = default;

    /// Has `handler` called before every change from now on, while the old value still stands.
    ObserverToken addObjectWillChangeObserver(std::function<void()> handler) {
        return objectWillChange_.add(std::move(handler));
    }

    void removeObjectWillChangeObserver(ObserverToken token) { objectWillChange_.remove(token); }

  protected:
  private:
    template <typename Value>
    friend class Published;

    ObserverList<> objectWillChange_;
};

} // namespace foundation
