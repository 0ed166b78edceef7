#pragma once

#import "Platform/MacOS/MacConversions.h"
#include "Platform/Workspace.h"

#import <AppKit/AppKit.h>

namespace platform {

/// The system's workspace. Main thread only.
class MacWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override {
        NSURL* const nsUrl = [NSURL URLWithString:nsString(url)];
        return nsUrl != nil && [[NSWorkspace sharedWorkspace] openURL:nsUrl];
    }
};

} // namespace platform
