#pragma once

#include "Platform/Images.h"
#import "Platform/MacOS/MacConversions.h"

namespace platform {

/// A system image. Main thread only.
class MacImage final : public Image {
  public:
    explicit MacImage(NSImage* image) : image_(image) {}

    [[nodiscard]] Size size() const override { return {image_.size.width, image_.size.height}; }

    void setSize(Size size) override { image_.size = nsSize(size); }

    [[nodiscard]] bool isTemplate() const override { return [image_ isTemplate]; }

    void setTemplate(bool isTemplate) override { [image_ setTemplate:isTemplate]; }

    [[nodiscard]] NSImage* nsImage() const { return image_; }

  private:
    NSImage* const image_;
};

/// The current drawing of the system.
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

/// System symbols and images drawn on demand. Main thread only.
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
