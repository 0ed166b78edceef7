#pragma once

#include "Platform/Permissions.h"

namespace platform {

/// Linux desktops ask no program for such trust, so every one has it. Main thread only.
class LinuxAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return true; }

    bool isProcessTrustedWithPrompt() override { return true; }
};

} // namespace platform
