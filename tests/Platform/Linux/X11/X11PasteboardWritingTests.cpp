#include "Platform/Linux/X11/X11Connection.h"
#include "tests/Desktop/GeneratedText.h"
#include "tests/Platform/Linux/X11/X11ClipboardTest.h"
#include "tests/Support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using foundation::TextBuffer;
using platform::PasteboardType;
using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::generatedText;

class X11PasteboardWritingTests : public testing_support::X11ClipboardTest {
  protected:
    /// Sends the owner of CLIPBOARD a request whose requestor does not exist.
    void requestForMissingWindow(const std::string& target) {
        const auto other = platform::X11Connection::open(server_->display());
        ASSERT_NE(other, nullptr);
        const platform::XcbPointer<xcb_get_selection_owner_reply_t> owner(
            xcb_get_selection_owner_reply(
                other->get(),
                xcb_get_selection_owner(other->get(), other->atom("CLIPBOARD")),
                nullptr));
        ASSERT_TRUE(owner);
        xcb_selection_request_event_t request{};
        request.response_type = XCB_SELECTION_REQUEST;
        request.time = XCB_CURRENT_TIME;
        request.owner = owner->owner;
        request.requestor = xcb_generate_id(other->get());
        request.selection = other->atom("CLIPBOARD");
        request.target = other->atom(target);
        request.property = other->atom("PLACE");
        std::array<char, 32> wire{};
        std::memcpy(wire.data(), &request, sizeof request);
        xcb_send_event(other->get(), 0, owner->owner, XCB_EVENT_MASK_NO_EVENT, wire.data());
        // Any reply shows that the server has delivered the request.
        static_cast<void>(other->atom("DONE"));
    }
};

TEST_F(X11PasteboardWritingTests, OffersEveryCommonTarget) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const Program reader = startReader({"targets"});
    ASSERT_EQ(turnUntilEnd(*reader), 0);
    std::vector<std::string> names;
    std::istringstream lines(reader->standardOutput());
    for (std::string line; std::getline(lines, line);) {
        names.push_back(line);
    }
    std::sort(names.begin(), names.end());
    EXPECT_THAT(names,
                ElementsAre("MULTIPLE",
                            "SAVE_TARGETS",
                            "STRING",
                            "TARGETS",
                            "TEXT",
                            "TIMESTAMP",
                            "UTF8_STRING",
                            "text/html",
                            "text/plain",
                            "text/plain;charset=utf-8"));
}

TEST_F(X11PasteboardWritingTests, OffersNoTargetForAMissingType) {
    open();
    pasteboard_->clearContents();
    ASSERT_TRUE(pasteboard_->setString(TextBuffer("list"), PasteboardType::string));
    EXPECT_EQ(readElsewhere("text/html"), std::nullopt);
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "list");
}

TEST_F(X11PasteboardWritingTests, EncodesTheTextForEachTarget) {
    open();
    ASSERT_TRUE(convert("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8D\x9E", "<b>\xC3\xA9</b>"));
    const Program reader = startReader(
        {"multiple", "text/plain;charset=utf-8,UTF8_STRING,text/plain,TEXT,STRING,text/html"});
    ASSERT_EQ(turnUntilEnd(*reader), 0);
    const std::string utf8 = "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8D\x9E\n";
    EXPECT_EQ(reader->standardOutput(),
              "text/plain;charset=utf-8 14\n" + utf8 + "UTF8_STRING 14\n" + utf8 +
                  "text/plain 14\n" + utf8 + "TEXT 14\n" + utf8 + "STRING 8\ncaf\xE9 ? ?\n" +
                  "text/html 9\n<b>\xC3\xA9</b>\n");
}

TEST_F(X11PasteboardWritingTests, ServesMultipleAndRefusesMissingTargetsInIt) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const Program reader = startReader({"multiple", "image/png,UTF8_STRING,SAVE_TARGETS"});
    ASSERT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(),
              "image/png refused\nUTF8_STRING 4\nlist\nSAVE_TARGETS 0\n\n");
}

TEST_F(X11PasteboardWritingTests, ReportsTheTimeOfItsAcquisition) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const auto timestamp = readElsewhere("TIMESTAMP");
    ASSERT_TRUE(timestamp.has_value());
    ASSERT_EQ(timestamp->size(), 4U);
    EXPECT_NE(*timestamp, std::string(4, '\0'));
}

TEST_F(X11PasteboardWritingTests, ServesObsoleteClientsThatSpecifyNoProperty) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const Program reader = startReader({"get", "STRING", "--property", "none"});
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), "list");
}

TEST_F(X11PasteboardWritingTests, RefusesARequestFromBeforeItsAcquisition) {
    const Program former = startOwner({"normal"});
    const auto formerSince = readElsewhere("TIMESTAMP");
    ASSERT_TRUE(formerSince.has_value());
    ASSERT_EQ(formerSince->size(), sizeof(std::uint32_t));
    std::uint32_t before = 0;
    std::memcpy(&before, formerSince->data(), sizeof before);
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const Program early = startReader({"get", "STRING", "--time", std::to_string(before)});
    EXPECT_EQ(turnUntilEnd(*early), 1);
    const Program timeless = startReader({"get", "STRING", "--time", "current"});
    EXPECT_EQ(turnUntilEnd(*timeless), 0);
}

TEST_F(X11PasteboardWritingTests, ServesARequestAMonthAfterItsAcquisition) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const auto since = readElsewhere("TIMESTAMP");
    ASSERT_TRUE(since.has_value());
    ASSERT_EQ(since->size(), sizeof(std::uint32_t));
    std::uint32_t time = 0;
    std::memcpy(&time, since->data(), sizeof time);
    constexpr std::uint32_t month = 30U * 24 * 60 * 60 * 1000;
    const Program late = startReader({"get", "STRING", "--time", std::to_string(time + month)});
    EXPECT_EQ(turnUntilEnd(*late), 0);
    EXPECT_EQ(late->standardOutput(), "list");
}

TEST_F(X11PasteboardWritingTests, ChangesTheOwnerOncePerConversionWithBothTypesInPlace) {
    open();
    const Program watcher = startReader({"changes"});
    ASSERT_TRUE(turnUntilOutput(*watcher, "ready"));
    constexpr int conversionCount = 50;
    for (int i = 1; i <= conversionCount; ++i) {
        ASSERT_TRUE(convert("list", "<b>list</b>"));
        ASSERT_TRUE(turnUntilOutput(*watcher, "change " + std::to_string(i) + ":"));
    }
    // The next change is the other program's: there was none in between.
    const Program other = startOwner({"latin1"});
    ASSERT_TRUE(turnUntilOutput(*watcher, "change 51: TARGETS TIMESTAMP STRING\n"));

    std::istringstream lines(watcher->standardOutput());
    std::string line;
    std::getline(lines, line);
    for (int i = 1; i <= conversionCount; ++i) {
        std::getline(lines, line);
        EXPECT_THAT(line, HasSubstr("change " + std::to_string(i) + ": text/html "));
        EXPECT_THAT(line, HasSubstr(" UTF8_STRING "));
    }
}

TEST_F(X11PasteboardWritingTests, RefusesATextWithoutClearingFirst) {
    open();
    EXPECT_FALSE(pasteboard_->setString(TextBuffer("list"), PasteboardType::string));
}

TEST_F(X11PasteboardWritingTests, RefusesATextOnceAnotherProgramHasTakenTheClipboard) {
    open();
    pasteboard_->clearContents();
    ASSERT_TRUE(pasteboard_->setString(TextBuffer("list"), PasteboardType::string));
    const Program other = startOwner({"normal", "--text", "theirs"});
    EXPECT_FALSE(pasteboard_->setString(TextBuffer("<b></b>"), PasteboardType::html));
    EXPECT_TRUE(hasLogged("The clipboard belongs to another program"));
    EXPECT_EQ(readString(), "theirs");
    EXPECT_TRUE(convert("ours again", "<b></b>"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "ours again");
}

TEST_F(X11PasteboardWritingTests, AddsTextsWithoutWaitingForTheServer) {
    open();
    pasteboard_->clearContents();
    server_->sendSignal(SIGSTOP);
    EXPECT_TRUE(pasteboard_->setString(TextBuffer("list"), PasteboardType::string));
    EXPECT_TRUE(pasteboard_->setString(TextBuffer("<b></b>"), PasteboardType::html));
    server_->sendSignal(SIGCONT);
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "list");
}

TEST_F(X11PasteboardWritingTests, IgnoresALossThatPrecedesItsLatestAcquisition) {
    open();
    ASSERT_TRUE(convert("first", "<b></b>"));
    const Program other = startOwner({"normal"});
    // The event of the loss is still unread, and the clipboard is ours again.
    ASSERT_TRUE(convert("second", "<b></b>"));
    ASSERT_TRUE(other->waitForOutput("lost"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "second");
    EXPECT_TRUE(pasteboard_->setString(TextBuffer("third"), PasteboardType::string));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "third");
}

TEST_F(X11PasteboardWritingTests, SurvivesRequestsFromDestroyedWindows) {
    limits_.chunkSize = 1000;
    open();
    ASSERT_TRUE(convert("list", generatedText(10'000)));
    requestForMissingWindow("UTF8_STRING");
    requestForMissingWindow("text/html");
    requestForMissingWindow("TARGETS");
    requestForMissingWindow("MULTIPLE");
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "list");
    EXPECT_EQ(readElsewhere("text/html"), generatedText(10'000));
}

TEST_F(X11PasteboardWritingTests, SendsLongTextInPieces) {
    limits_.chunkSize = 7;
    open();
    ASSERT_TRUE(convert(generatedText(10'000), "<b></b>"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), generatedText(10'000));
}

TEST_F(X11PasteboardWritingTests, SendsSixtyFourMegabytesInPieces) {
    open();
    ASSERT_TRUE(convert(generatedText(64 * megabyte), "<b></b>"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), generatedText(64 * megabyte));
}

TEST_F(X11PasteboardWritingTests, ServesManyReceiversAtOnce) {
    limits_.chunkSize = 1000;
    open();
    ASSERT_TRUE(convert(generatedText(megabyte), "<b></b>"));
    std::array<Program, 8> readers;
    for (std::size_t i = 0; i < readers.size(); ++i) {
        readers.at(i) = startReader({"get", i % 2 == 0 ? "UTF8_STRING" : "STRING"});
    }
    for (const Program& reader : readers) {
        ASSERT_EQ(turnUntilEnd(*reader), 0);
        EXPECT_EQ(reader->standardOutput(), generatedText(megabyte));
    }
}

TEST_F(X11PasteboardWritingTests, SendsSeveralLongTextsToOneReceiver) {
    limits_.chunkSize = 1000;
    open();
    const std::string text = generatedText(5000);
    ASSERT_TRUE(convert(text, text));
    const Program reader = startReader({"multiple", "UTF8_STRING,text/html"});
    ASSERT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(),
              "UTF8_STRING 5000\n" + text + "\ntext/html 5000\n" + text + "\n");
}

TEST_F(X11PasteboardWritingTests, ServesOthersWhileAReceiverHasStoppedReading) {
    limits_.chunkSize = 1000;
    open();
    const std::string text = generatedText(10'000);
    ASSERT_TRUE(convert(text, "<b></b>"));
    const Program stopped = startReader({"get", "UTF8_STRING", "--stop-after", "2000"});
    ASSERT_TRUE(turnUntilOutput(*stopped, "stopped"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), text);
    EXPECT_EQ(readElsewhere("text/html"), "<b></b>");
}

TEST_F(X11PasteboardWritingTests, CompletesATransferWithTheTextItBeganWith) {
    limits_.chunkSize = 1000;
    open();
    const std::string text = generatedText(100'000);
    ASSERT_TRUE(convert(text, "<b></b>"));
    const Program reader = startReader({"get", "UTF8_STRING", "--stop-after", "2000"});
    ASSERT_TRUE(turnUntilOutput(*reader, "stopped"));
    ASSERT_TRUE(convert("another", "<b></b>"));
    reader->sendSignal(SIGUSR1);
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), text);
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "another");
}

TEST_F(X11PasteboardWritingTests, SurvivesTheServerWithoutSpinning) {
    class CountingLoop final : public platform::EventLoop {
      public:
        explicit CountingLoop(platform::EventLoop& loop) : loop_(loop) {}

        [[nodiscard]] std::unique_ptr<platform::FileDescriptorWatch>
        watchReadable(int descriptor, std::function<void()> ready) override {
            return loop_.watchReadable(descriptor, [this, ready = std::move(ready)] {
                ++count_;
                ready();
            });
        }

        [[nodiscard]] int count() const { return count_; }

      private:
        platform::EventLoop& loop_;
        int count_ = 0;
    };

    CountingLoop loop(loop_);
    pasteboard_ = std::make_unique<platform::X11Pasteboard>(
        platform::X11Connection::open(server_->display()), loop, queue_, loggers_);
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    server_.reset();
    // XCB itself must not raise SIGPIPE.
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    pasteboard_->clearContents();
    EXPECT_FALSE(pasteboard_->setString(TextBuffer("list"), PasteboardType::string));
    EXPECT_EQ(readString(), std::nullopt);
    pasteboard_->handOver();
    ASSERT_TRUE(turnUntil([&] { return hasLogged("The X server is gone"); }));

    const int countBefore = loop.count();
    int turns = 0;
    EXPECT_TRUE(turnUntil([&] { return ++turns > 20; }));
    EXPECT_EQ(loop.count(), countBefore);
    pasteboard_.reset();
}

TEST_F(X11PasteboardWritingTests, KeepsItsContentsIfAnAcquisitionTimesOut) {
    beImpatient();
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    server_->sendSignal(SIGSTOP);
    pasteboard_->clearContents();
    EXPECT_FALSE(pasteboard_->setString(TextBuffer("new"), PasteboardType::string));
    server_->sendSignal(SIGCONT);
    EXPECT_TRUE(hasLogged("Cannot take over the clipboard"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "list");
    EXPECT_EQ(readElsewhere("text/html"), "<b>list</b>");

    EXPECT_TRUE(convert("new", "<b>new</b>"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "new");
}

} // namespace
