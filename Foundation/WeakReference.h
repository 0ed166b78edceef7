#pragma once

#include "Foundation/Interface.h"

#include <memory>
#include <utility>

namespace foundation {

/// Refers to an object without owning it, and is null once the object is gone. Made by the object's
/// WeakReferenceSource. Any thread may make, copy and drop one while the object exists; get() is
/// for the thread that destroys the object.
template <typename Object>
class WeakReference {
  public:
    WeakReference() = default;

    explicit WeakReference(std::shared_ptr<Object* const> cell) : cell_(std::move(cell)) {}

    /// The object; null once its destruction has begun.
    [[nodiscard]] Object* get() const { return cell_ ? *cell_ : nullptr; }

  private:
    std::shared_ptr<Object* const> cell_;
};

/// A member of an object that others refer to weakly. Unlike a shared pointer it does not affect
/// who owns the object, and a call into the object does not keep it alive.
template <typename Object>
class WeakReferenceSource : Pinned {
  public:
    explicit WeakReferenceSource(Object* object) : cell_(std::make_shared<Object*>(object)) {}

    ~WeakReferenceSource() { end(); }

    [[nodiscard]] WeakReference<Object> reference() const { return WeakReference<Object>(cell_); }

    /// Makes all references null now, for a destructor that has more to do.
    void end() { *cell_ = nullptr; }

  private:
    std::shared_ptr<Object*> cell_;
};

} // namespace foundation
