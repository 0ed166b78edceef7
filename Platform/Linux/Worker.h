#pragma once

#include "Foundation/Interface.h"

#include <functional>

namespace platform {

/// Does work that would keep the event loop waiting, for a disk for example: one piece after the
/// other, in the order in which they were given. Both operations belong to one thread, the
/// owner's.
class Worker : public foundation::Interface {
  public:
    /// Has the work done soon, on whatever thread. It must not throw.
    virtual void perform(std::function<void()> work) = 0;

    /// Returns when everything that was given has been done.
    virtual void waitUntilDone() = 0;
};

} // namespace platform
