#pragma once

#include "Platform/AccessibilityTrust.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace platform {

/// The system's accessibility service. Main thread only.
class MacAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return AXIsProcessTrusted(); }

    bool isProcessTrustedWithPrompt() override {
        NSDictionary* const options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
        return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }
};

} // namespace platform
