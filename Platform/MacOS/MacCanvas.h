#pragma once

#include "Platform/Images.h"
#import "Platform/MacOS/MacConversions.h"

namespace platform {

/// The drawing that the system has begun.
class MacCanvas final : public Canvas {
  public:
    void fill(Rect rect, Color color) override {
        [nsColor(color) set];
        NSRectFillUsingOperation(nsRect(rect), NSCompositingOperationCopy);
    }

    [[nodiscard]] Size measure(std::string_view text, SystemFont font) override {
        const NSSize size =
            [nsString(text) sizeWithAttributes:@{NSFontAttributeName : nsFont(font)}];
        return {size.width, size.height};
    }

    void drawText(std::string_view text, Point at, SystemFont font, Color color) override {
        NSDictionary* const attributes =
            @{NSFontAttributeName : nsFont(font), NSForegroundColorAttributeName : nsColor(color)};
        [nsString(text) drawAtPoint:NSMakePoint(at.x, at.y) withAttributes:attributes];
    }

  private:
    static NSColor* nsColor(Color color) {
        return color == Color::clear ? [NSColor clearColor] : [NSColor whiteColor];
    }
};

} // namespace platform
