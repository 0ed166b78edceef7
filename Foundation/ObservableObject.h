#pragma once

#include "Foundation/ObserverList.h"

#include <functional>
#include <utility>

namespace foundation {

/// An object whose published properties announce each coming change before it happens, for views
/// that are bound to it. One thread only.
class ObservableObject {
  public:
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;
    ObservableObject(ObservableObject&&) = delete;
    ObservableObject& operator=(ObservableObject&&) = delete;

    /// Has `handler` called before every change from now on, while the old value still stands.
    ObserverToken addObjectWillChangeObserver(std::function<void()> handler) {
        return objectWillChange_.add(std::move(handler));
    }

    void removeObjectWillChangeObserver(ObserverToken token) { objectWillChange_.remove(token); }

  protected:
    ~ObservableObject() = default;

  private:
    template <typename Value>
    friend class Published;

    ObserverList<> objectWillChange_;
};

} // namespace foundation
