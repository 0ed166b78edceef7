#pragma once

#include "Foundation/FatalError.h"
#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"

#include <functional>
#include <utility>

namespace foundation {

/// An object that announces each change of its published properties before it happens, so that
/// views can be bound to it. One thread only.
class ObservableObject : Pinned {
  public:
    ObservableObject() = default;

    /// Calls `handler` before every change, while the property still has its old value. A handler
    /// may not destroy the object: that is a fatal error.
    ObserverToken addObjectWillChangeObserver(std::function<void()> handler) {
        return objectWillChange_.add(std::move(handler));
    }

    void removeObjectWillChangeObserver(ObserverToken token) { objectWillChange_.remove(token); }

  protected:
    ~ObservableObject() {
        if (runningAnnouncements_ > 0) {
            fatalError("an observer destroyed the object whose change it was notified of");
        }
    }

  private:
    template <typename Value>
    friend class Published;

    void announceChange() {
        struct Running {
            explicit Running(int& running) : count(running) { ++count; }

            ~Running() { --count; }

            int& count;
        };

        const Running running(runningAnnouncements_);
        objectWillChange_.notify();
    }

    ObserverList<> objectWillChange_;
    int runningAnnouncements_ = 0;
};

/// A property of an observable object, which it is a member of. Every assignment is announced
/// first, even one that does not change the value. One thread only.
template <typename Value>
class Published : Pinned {
  public:
    explicit Published(ObservableObject& owner, Value initial = {})
        : owner_(owner), value_(std::move(initial)) {}

    [[nodiscard]] const Value& get() const { return value_; }

    void set(Value value) {
        owner_.announceChange();
        value_ = std::move(value);
    }

  private:
    ObservableObject& owner_;
    Value value_;
};

} // namespace foundation
