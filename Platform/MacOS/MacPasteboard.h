#pragma once

#include "Foundation/Logger.h"
#import "Platform/MacOS/MacConversions.h"
#include "Platform/Pasteboard.h"

#import <dispatch/dispatch.h>

#include <chrono>
#include <new>

namespace platform {

/// A system pasteboard; the program uses the general one. Newer systems may ask the user before it
/// is read; a refusal, or no answer within the time limit, reads as no text. Main thread only.
class MacPasteboard final : public Pasteboard {
  public:
    MacPasteboard(NSPasteboard* pasteboard,
                  foundation::Logger logger,
                  std::chrono::nanoseconds limit = std::chrono::seconds(30))
        : pasteboard_(pasteboard), logger_(logger), limit_(limit) {}

    void clearContents() override { [pasteboard_ clearContents]; }

    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override {
        try {
            return [pasteboard_ setString:nsString(text.view()) forType:nameOf(type)];
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override {
        NSString* const string = isReadingDenied() ? nil : read(nameOf(type));
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

    [[nodiscard]] bool isReadingDenied() const {
// Older tools do not know the setting; a denied reading finds no text there, too.
#if __MAC_OS_X_VERSION_MAX_ALLOWED >= 150400
        if (@available(macOS 15.4, *)) {
            if (pasteboard_.accessBehavior == NSPasteboardAccessBehaviorAlwaysDeny) {
                logger_.error("The clipboard may not be read: allow it in the system settings "
                              "under Privacy & Security, Paste from Other Apps");
                return true;
            }
        }
#endif
        return false;
    }

    /// In another thread, since the system answers only after the user or the clipboard's owner.
    /// Nil until a reading that ran out of time has ended.
    NSString* read(NSString* type) {
        if (unanswered_ != nil && dispatch_semaphore_wait(unanswered_, DISPATCH_TIME_NOW) != 0) {
            logger_.error("The clipboard is still being read");
            return nil;
        }
        dispatch_semaphore_t const isAnswered = dispatch_semaphore_create(0);
        NSPasteboard* const pasteboard = pasteboard_;
        __block NSString* answer = nil;
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INTERACTIVE, 0), ^{
          answer = [pasteboard stringForType:type];
          dispatch_semaphore_signal(isAnswered);
        });
        const dispatch_time_t end = dispatch_time(DISPATCH_TIME_NOW, limit_.count());
        if (dispatch_semaphore_wait(isAnswered, end) != 0) {
            logger_.error("The clipboard could not be read in time");
            unanswered_ = isAnswered;
            return nil;
        }
        unanswered_ = nil;
        return answer;
    }

    NSPasteboard* const pasteboard_;
    const foundation::Logger logger_;
    const std::chrono::nanoseconds limit_;
    /// Signalled at the end of a reading that ran out of time.
    dispatch_semaphore_t unanswered_ = nil;
};

} // namespace platform
