#pragma once

#import "Platform/MacOS/MacConversions.h"
#include "Platform/Pasteboard.h"

#include <new>

namespace platform {

/// A system pasteboard; the program uses the general one. Newer systems may ask the user before it
/// is read; a refusal reads as no text. Main thread only.
class MacPasteboard final : public Pasteboard {
  public:
    explicit MacPasteboard(NSPasteboard* pasteboard) : pasteboard_(pasteboard) {}

    void clearContents() override { [pasteboard_ clearContents]; }

    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override {
        try {
            return [pasteboard_ setString:nsString(text.view()) forType:nameOf(type)];
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override {
        NSString* const string = [pasteboard_ stringForType:nameOf(type)];
        try {
            return string == nil ? std::nullopt : std::optional(utf8Text(string));
        } catch (const std::bad_alloc&) {
            return std::nullopt;
        }
    }

  private:
    static NSString* nameOf(PasteboardType type) {
        return type == PasteboardType::string ? NSPasteboardTypeString : NSPasteboardTypeHTML;
    }

    NSPasteboard* const pasteboard_;
};

} // namespace platform
