#pragma once

#import "Platform/MacOS/MacStatusItem.h"

namespace platform {

/// The right part of the menu bar. Main thread only.
class MacStatusBar final : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override {
        return std::make_unique<MacStatusItem>(
            [[NSStatusBar systemStatusBar] statusItemWithLength:length]);
    }
};

} // namespace platform
