#pragma once

#include "Foundation/ObservableObject.h"

#include <utility>

namespace foundation {

/// A property of an observable object, whose member it is: every assignment is announced to the
/// object's observers first, also one that leaves the value as it was. One thread only.
template <typename Value>
class Published {
  public:
    explicit Published(ObservableObject& owner, Value initial = {})
        : owner_(owner), value_(std::move(initial)) {}

    Published(const Published&) = delete;
    Published(Published&&) = delete;
    Published& operator=(const Published&) = delete;
    Published& operator=(Published&&) = delete;
    ~Published() = default;

    [[nodiscard]] const Value& get() const { return value_; }

    void set(Value value) {
        owner_.objectWillChange_.notify();
        value_ = std::move(value);
    }

  private:
    ObservableObject& owner_;
    Value value_;
};

} // namespace foundation
