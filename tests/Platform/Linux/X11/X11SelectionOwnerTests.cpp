#include "Foundation/Logger.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11SelectionOwner.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "tests/Desktop/GeneratedText.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateXServer.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using foundation::TextBuffer;
using platform::PasteboardType;
using testing_support::ChildProcess;
using testing_support::generatedText;

/// An owner on virtual time, whose events are handled when the test says so.
class X11SelectionOwnerTests : public testing::Test {
  protected:
    /// Owns a text of 100 pieces that nothing else keeps alive.
    std::weak_ptr<const TextBuffer> ownLongText() {
        EXPECT_TRUE(owner_.acquire());
        auto text = std::make_shared<const TextBuffer>(generatedText(100'000));
        std::weak_ptr<const TextBuffer> observed = text;
        owner_.hold(PasteboardType::string, std::move(text));
        return observed;
    }

    [[nodiscard]] std::unique_ptr<ChildProcess> startStoppingReader() const {
        return std::make_unique<ChildProcess>(
            std::vector<std::string>{
                CLIPBOARD_READER, "get", "UTF8_STRING", "--stop-after", "5000"},
            ChildProcess::Options{server_.environment(), {}, {}});
    }

    bool handleUntil(const std::function<bool()>& condition) {
        return testing_support::waitUntil(condition, testing_support::patience, [this] {
            while (const auto event = context_.events.next()) {
                owner_.handle(*event);
            }
        });
    }

    bool handleUntilStopped(ChildProcess& reader) {
        return handleUntil(
            [&] { return reader.waitForOutput("stopped", std::chrono::milliseconds(0)); });
    }

    testing_support::PrivateXServer server_;
    platform::MemoryMainQueue queue_;
    platform::MemoryLogSink sink_;
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    platform::TransferLimits limits_{.chunkSize = 1000};
    platform::X11ClipboardContext context_{platform::X11Connection::open(server_.display()),
                                           limits_,
                                           loggers_.logger("X11Pasteboard")};
    platform::X11SelectionOwner owner_{context_, queue_};
};

TEST_F(X11SelectionOwnerTests, KeepsATextWhileItIsBeingSent) {
    const auto text = ownLongText();
    const auto reader = startStoppingReader();
    ASSERT_TRUE(handleUntilStopped(*reader));
    ASSERT_TRUE(owner_.acquire());
    EXPECT_FALSE(text.expired());
    reader->sendSignal(SIGUSR1);
    EXPECT_TRUE(handleUntil([&] { return text.expired(); }));
    EXPECT_EQ(reader->waitForExit(), 0);
    EXPECT_EQ(reader->standardOutput(), generatedText(100'000));
}

TEST_F(X11SelectionOwnerTests, DropsAReceiverThatHasStoppedReading) {
    const auto text = ownLongText();
    const auto reader = startStoppingReader();
    ASSERT_TRUE(handleUntilStopped(*reader));
    ASSERT_TRUE(owner_.acquire());
    queue_.advance(limits_.sending);
    EXPECT_FALSE(text.expired()) << "it made progress since the last check";
    queue_.advance(limits_.sending);
    EXPECT_TRUE(text.expired());
    EXPECT_EQ(queue_.pendingCount(), 0U);
}

TEST_F(X11SelectionOwnerTests, DropsAReceiverThatHasExited) {
    const auto text = ownLongText();
    const auto reader = startStoppingReader();
    ASSERT_TRUE(handleUntilStopped(*reader));
    ASSERT_TRUE(owner_.acquire());
    reader->sendSignal(SIGKILL);
    EXPECT_TRUE(handleUntil([&] { return text.expired(); }));
}

TEST_F(X11SelectionOwnerTests, SendsNothingToItsOwnWindow) {
    const auto text = ownLongText();
    const xcb_selection_request_event_t request{.response_type = XCB_SELECTION_REQUEST,
                                                .pad0 = 0,
                                                .sequence = 0,
                                                .time = XCB_CURRENT_TIME,
                                                .owner = owner_.window(),
                                                .requestor = owner_.window(),
                                                .selection = context_.atoms.clipboard,
                                                .target = context_.atoms.utf8String,
                                                .property = context_.atoms.utf8String};
    xcb_generic_event_t event{};
    std::memcpy(&event, &request, std::min(sizeof event, sizeof request));
    owner_.handle(event);
    EXPECT_EQ(queue_.pendingCount(), 0U);
    EXPECT_TRUE(owner_.acquire());
    EXPECT_TRUE(text.expired());
}

TEST_F(X11SelectionOwnerTests, DropsItsTextsWhenAnotherProgramTakesTheClipboard) {
    const auto text = ownLongText();
    EXPECT_TRUE(owner_.owns());
    ChildProcess other({CLIPBOARD_OWNER, "normal"},
                       ChildProcess::Options{server_.environment(), {}, {}});
    EXPECT_TRUE(handleUntil([&] { return text.expired(); }));
    EXPECT_FALSE(owner_.owns());
    EXPECT_TRUE(owner_.offeredTexts().empty());
}

} // namespace
