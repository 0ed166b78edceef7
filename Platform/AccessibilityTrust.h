#pragma once

#include "Foundation/Interface.h"

namespace platform {

/// Whether the user lets this program control the computer through the system's accessibility
/// service. A system without such a service trusts every program. Main thread only.
class AccessibilityTrust : public foundation::Interface {
  public:
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// The same question, and the system explains to the user how to grant trust where
    /// there is none. Does not wait for the user.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

} // namespace platform
