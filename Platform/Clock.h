#pragma once

#include "Foundation/Date.h"
#include "Foundation/Interface.h"

namespace platform {

/// The wall clock. It may jump, also backwards, when the user or the network sets it. Main thread
/// only.
class Clock : public foundation::Interface {
  public:
    [[nodiscard]] virtual foundation::Date now() const = 0;
};

} // namespace platform
