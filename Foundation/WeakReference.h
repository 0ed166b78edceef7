#pragma once

#include "Foundation/Interface.h"

#include <memory>
#include <utility>

namespace foundation {

/// Holds an object without owning it and notices when it goes. Copyable; may outlive the object.
/// Any thread may make, copy and drop one while the object exists; get() belongs to the thread on
/// which the object ends. Made by the object's WeakReferenceSource.
template <typename Object>
class WeakReference {
  public:
    WeakReference() = default;

    explicit WeakReference(std::shared_ptr<Object* const> cell) : cell_(std::move(cell)) {}

    /// The object; null once its end has begun.
    [[nodiscard]] Object* get() const { return cell_ ? *cell_ : nullptr; }

  private:
    std::shared_ptr<Object* const> cell_;
};

/// A member of an object that others hold weakly. Unlike a shared pointer it leaves the object's
/// owner alone, and a caller that is inside the object does not keep it from ending.
template <typename Object>
class WeakReferenceSource : Pinned {
  public:
    explicit WeakReferenceSource(Object* object) : cell_(std::make_shared<Object*>(object)) {}

    ~WeakReferenceSource() { end(); }

    [[nodiscard]] WeakReference<Object> reference() const { return WeakReference<Object>(cell_); }

    /// Ends all references now, for a destructor that has more to do.
    void end() { *cell_ = nullptr; }

  private:
    std::shared_ptr<Object*> cell_;
};

} // namespace foundation
