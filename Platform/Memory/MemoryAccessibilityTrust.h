#pragma once

#include "Platform/AccessibilityTrust.h"

namespace platform {

/// A trust that is there, as at first, or not, as the test says. Main thread only.
class MemoryAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return isTrusted_; }

    bool isProcessTrustedWithPrompt() override {
        ++promptCount_;
        return isTrusted_;
    }

    void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }

    /// How often the question was asked with the system's prompt.
    [[nodiscard]] int promptCount() const { return promptCount_; }

  private:
    bool isTrusted_ = true;
    int promptCount_ = 0;
};

} // namespace platform
