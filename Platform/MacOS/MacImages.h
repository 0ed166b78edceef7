#pragma once

#import "Platform/MacOS/MacCanvas.h"
#import "Platform/MacOS/MacImage.h"

namespace platform {

/// The symbols of the system, and images that are drawn by need. Main thread only.
class MacImages final : public Images {
  public:
    [[nodiscard]] std::shared_ptr<Image> systemSymbol(std::string_view name,
                                                      std::string_view description) override {
        NSImage* const symbol = [NSImage imageWithSystemSymbolName:nsString(name)
                                          accessibilityDescription:nsString(description)];
        return symbol == nil ? nullptr : std::make_shared<MacImage>(symbol);
    }

    [[nodiscard]] std::shared_ptr<Image> draw(Size size,
                                              std::function<void(Canvas&)> draw) override {
        const auto drawNow = ^BOOL(NSRect /*bounds*/) {
          MacCanvas canvas;
          draw(canvas);
          return YES;
        };
        return std::make_shared<MacImage>([NSImage imageWithSize:nsSize(size)
                                                         flipped:NO
                                                  drawingHandler:drawNow]);
    }
};

} // namespace platform
