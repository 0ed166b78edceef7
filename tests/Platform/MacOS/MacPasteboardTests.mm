#import "Platform/MacOS/MacPasteboard.h"
#include "Platform/Memory/MemoryLogSink.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A pasteboard whose reading the user decides about.
@interface PWTestPasteboard : NSObject
@property(nonatomic) NSPasteboardAccessBehavior accessBehavior;
/// Holds up each reading until it is signalled, if it is set.
@property(nonatomic) dispatch_semaphore_t answer;
@property(atomic) int readings;
@end

@implementation PWTestPasteboard

- (NSString*)stringForType:(NSString*)type {
    self.readings = self.readings + 1;
    if (self.answer != nil) {
        dispatch_semaphore_wait(self.answer, DISPATCH_TIME_FOREVER);
        dispatch_semaphore_signal(self.answer);
    }
    return @"copied";
}

@end

namespace {

using namespace std::chrono_literals;

class MacPasteboardTests : public testing::Test {
  protected:
    std::optional<std::string> read(std::chrono::nanoseconds limit = 1h) {
        if (!pasteboard_) {
            id const untyped = nsPasteboard_;
            pasteboard_.emplace(
                untyped, foundation::Logger(logSink_, "test", "MacPasteboard"), limit);
        }
        const auto text = pasteboard_->string(platform::PasteboardType::string);
        return text ? std::optional(std::string(text->view())) : std::nullopt;
    }

    testing_support::AppKitLoop loop_;
    platform::MemoryLogSink logSink_;
    PWTestPasteboard* const nsPasteboard_ = [[PWTestPasteboard alloc] init];
    std::optional<platform::MacPasteboard> pasteboard_;
};

TEST_F(MacPasteboardTests, ReadsTheText) {
    EXPECT_EQ(read(), "copied");
    EXPECT_THAT(logSink_.messages(), IsEmpty());
}

TEST_F(MacPasteboardTests, ADeniedReadingNamesTheSettingAndAsksNobody) {
    nsPasteboard_.accessBehavior = NSPasteboardAccessBehaviorAlwaysDeny;
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(nsPasteboard_.readings, 0);
    EXPECT_THAT(logSink_.messages(), ElementsAre(HasSubstr("Paste from Other Apps")));
}

TEST_F(MacPasteboardTests, AReadingWithoutAnswerEndsAndThePasteboardIsReadAgainAfterTheAnswer) {
    dispatch_semaphore_t const answer = dispatch_semaphore_create(0);
    nsPasteboard_.answer = answer;
    EXPECT_EQ(read(10ms), std::nullopt);
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_LE(nsPasteboard_.readings, 1);
    EXPECT_THAT(logSink_.messages(),
                ElementsAre("error: The clipboard could not be read in time",
                            "error: The clipboard is still being read"));
    dispatch_semaphore_signal(answer);
    std::optional<std::string> text;
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (!text && std::chrono::steady_clock::now() < end) {
        text = read();
    }
    EXPECT_EQ(text, "copied");
}

} // namespace
