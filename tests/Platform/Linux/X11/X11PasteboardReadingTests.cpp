#include "Platform/Linux/X11/X11Connection.h"
#include "tests/Desktop/GeneratedText.h"
#include "tests/Platform/Linux/X11/X11ClipboardTest.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <string>
#include <utility>

namespace {

using platform::PasteboardType;
using testing_support::generatedText;

/// The CPU time of this process in user mode, which hardly depends on the load of the machine.
std::int64_t userSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec;
}

class X11PasteboardReadingTests : public testing_support::X11ClipboardTest {
  protected:
    /// Expects that the owner's text cannot be read, in bounded time, and that it keeps owning the
    /// clipboard.
    void expectNoText(const std::vector<std::string>& ownerArguments) {
        const Program owner = startOwner(ownerArguments);
        beImpatient();
        open();
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(readString(), std::nullopt);
        EXPECT_LT(std::chrono::steady_clock::now() - start, testing_support::patience);
        EXPECT_TRUE(owner->isRunning());
        EXPECT_EQ(owner->standardOutput().find("lost"), std::string::npos);
    }

    /// The number of windows on the server that still hold an answer.
    [[nodiscard]] int answersLeftOnTheServer() const {
        const auto connection = platform::X11Connection::open(server_->display());
        xcb_connection_t* const xcb = connection->get();
        const platform::XcbPointer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, connection->screen().root), nullptr));
        EXPECT_TRUE(tree);
        const auto* const windows = xcb_query_tree_children(tree.get());
        const auto windowCount = xcb_query_tree_children_length(tree.get());
        const xcb_atom_t place = connection->atom("PASTEWISE_CLIPBOARD");
        return static_cast<int>(
            std::count_if(windows, windows + windowCount, [&](xcb_window_t window) {
                const platform::XcbPointer<xcb_get_property_reply_t> property(
                    xcb_get_property_reply(
                        xcb,
                        xcb_get_property(xcb, 0, window, place, XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
                        nullptr));
                return property && property->type != XCB_ATOM_NONE;
            }));
    }

    /// The targets requested from the owner so far, in order, of which `last` is the last.
    static std::string asked(testing_support::ChildProcess& owner, const std::string& last) {
        EXPECT_TRUE(owner.waitForOutput("asked " + last + "\n"));
        const std::string& output = owner.standardOutput();
        return output.substr(output.find('\n') + 1);
    }
};

TEST_F(X11PasteboardReadingTests, ReadsTextOfferedInSeveralFormats) {
    const Program owner = startOwner({"normal"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
    EXPECT_EQ(read(PasteboardType::html), "<b>milk</b>");
}

TEST_F(X11PasteboardReadingTests, RequestsTargetsAndThenTheBestOfThem) {
    const Program owner = startOwner({"normal"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
    EXPECT_EQ(asked(*owner, "UTF8_STRING"), "asked TARGETS\nasked UTF8_STRING\n");
}

TEST_F(X11PasteboardReadingTests, ConvertsLatin1ToUtf8) {
    const Program owner = startOwner({"latin1"});
    open();
    EXPECT_EQ(readString(), "caf\xC3\xA9");
    EXPECT_EQ(asked(*owner, "STRING"), "asked TARGETS\nasked STRING\n");
}

TEST_F(X11PasteboardReadingTests, ReadsTextOfferedAsTextPlainOnly) {
    const Program owner = startOwner({"plain", "--text", "caf\u00E9"});
    open();
    EXPECT_EQ(readString(), "caf\u00E9");
    EXPECT_EQ(asked(*owner, "text/plain"), "asked TARGETS\nasked text/plain\n");
}

TEST_F(X11PasteboardReadingTests, ReadsTextPlainThatIsNotUtf8AsLatin1) {
    const Program owner = startOwner({"plain-latin1"});
    open();
    EXPECT_EQ(readString(), "caf\u00E9");
}

TEST_F(X11PasteboardReadingTests, ReadsTextInTheEncodingThatTheOwnerStates) {
    const Program utf8Owner = startOwner({"text-utf8", "--text", "\u20AC"});
    open();
    EXPECT_EQ(readString(), "\u20AC");
    const Program latin1Owner = startOwner({"text-latin1"});
    EXPECT_EQ(readString(), "caf\u00E9");
}

TEST_F(X11PasteboardReadingTests, ReadsFromAnOwnerThatRefusesTargets) {
    const Program owner = startOwner({"no-targets"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, ReadsEmptyTextAsText) {
    const Program owner = startOwner({"empty"});
    open();
    EXPECT_EQ(readString(), "");
}

TEST_F(X11PasteboardReadingTests, KeepsALeadingByteOrderMark) {
    const Program owner = startOwner({"bom"});
    open();
    EXPECT_EQ(readString(), "\xEF\xBB\xBFmilk");
}

TEST_F(X11PasteboardReadingTests, RepairsIllFormedText) {
    const Program owner = startOwner({"ill-formed"});
    open();
    EXPECT_EQ(readString(), "a\uFFFD\uFFFD(b");
}

TEST_F(X11PasteboardReadingTests, ReadsNothingIfTheClipboardHasNoOwner) {
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, ReadsNoTextFromAnImage) {
    expectNoText({"image"});
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, ReadsNoTextFromFilesCopiedInAFileManager) {
    expectNoText({"files"});
}

TEST_F(X11PasteboardReadingTests, ReadsNoTextFromAUriListOfFiles) {
    expectNoText({"file-uris"});
}

TEST_F(X11PasteboardReadingTests, ReadsTheTextOfACopiedLink) {
    const Program owner = startOwner({"link"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, ReadsTextThatIsAlsoOfferedAsAnImage) {
    const Program owner = startOwner({"spreadsheet"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, IgnoresThePrimarySelection) {
    const Program owner = startOwner({"normal", "--selection", "PRIMARY"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(convert("ours", "<i>ours</i>"));
    const Program reader = startReader({"get", "UTF8_STRING", "--selection", "PRIMARY"});
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, ReadsNothingIfTheOwnerRefusesEverything) {
    expectNoText({"refuse"});
    EXPECT_TRUE(hasLogged("The clipboard owner refuses to convert its text"));
}

TEST_F(X11PasteboardReadingTests, ReadsNothingIfTheOwnerRefusesItsOwnTargets) {
    expectNoText({"refuse-text"});
    EXPECT_TRUE(hasLogged("The clipboard owner refuses to convert its text"));
}

TEST_F(X11PasteboardReadingTests, ReadsNothingIfTheAnswerIsNotInBytes) {
    expectNoText({"wrong-format"});
}

TEST_F(X11PasteboardReadingTests, GivesUpAnUnresponsiveOwner) {
    expectNoText({"hang"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatStopsRespondingAfterTargets) {
    expectNoText({"hang-text"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatStallsDuringATransfer) {
    expectNoText({"stall"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatFloodsItWithEventsInsteadOfAnswering) {
    expectNoText({"flood"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatEndlesslyAnnouncesPiecesButSendsNone) {
    expectNoText({"flood-pieces"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpATransferThatChangesItsType) {
    const Program owner = startOwner({"mixed"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner violates the transfer protocol"));
    EXPECT_TRUE(owner->waitForOutput("asked UTF8_STRING\n"));
    EXPECT_EQ(owner->standardOutput().find("asked STRING"), std::string::npos);
    EXPECT_EQ(owner->standardOutput().find("asked text/plain"), std::string::npos);
}

TEST_F(X11PasteboardReadingTests, WaitsForASlowTransferThatMakesProgress) {
    const std::string text = generatedText(100);
    const Program owner = startOwner({"slow", "--size", "100", "--chunk", "10", "--delay", "100"});
    beImpatient();
    open();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(readString(), text);
    EXPECT_GT(std::chrono::steady_clock::now() - start, limits_.silence);
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatExitsDuringATransfer) {
    const Program owner = startOwner({"die"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner changed during a read"));
}

TEST_F(X11PasteboardReadingTests, GivesUpIfTheOwnerChangesDuringATransfer) {
    const Program owner = startOwner({"change"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner changed during a read"));
}

TEST_F(X11PasteboardReadingTests, NeverMistakesALateAnswerForTheNextOne) {
    const Program late = startOwner({"late-text", "--delay", "900", "--text", "too late"});
    beImpatient();
    open();
    EXPECT_EQ(readString(), std::nullopt);
    const Program next =
        startOwner({"slow", "--text", "in time", "--chunk", "1", "--delay", "100"});
    // The late answer arrives during this transfer.
    EXPECT_EQ(readString(), "in time");
    EXPECT_TRUE(late->waitForOutput("answered UTF8_STRING"));
    EXPECT_TRUE(late->isRunning());
    EXPECT_TRUE(turnUntil([&] { return answersLeftOnTheServer() == 0; }));
}

TEST_F(X11PasteboardReadingTests, ReadsTextSentInSmallPieces) {
    const Program owner = startOwner({"normal", "--size", "10000", "--chunk", "7"});
    open();
    EXPECT_EQ(readString(), generatedText(10'000));
}

TEST_F(X11PasteboardReadingTests, ReadsLongTextSentInSmallPiecesInLinearTime) {
    const Program owner =
        startOwner({"normal", "--size", std::to_string(4 * megabyte), "--chunk", "64"});
    open();
    const auto start = userSeconds();
    EXPECT_EQ(readString(), generatedText(4 * megabyte));
    EXPECT_LT(userSeconds() - start, 5);
}

TEST_F(X11PasteboardReadingTests, ReadsLongTextSentInOnePiece) {
    const Program owner = startOwner({"normal", "--size", std::to_string(8 * megabyte + 5)});
    open();
    EXPECT_EQ(readString(), generatedText(8 * megabyte + 5));
}

TEST_F(X11PasteboardReadingTests, ReadsSixtyFourMegabytesInPieces) {
    const Program owner = startOwner(
        {"normal", "--size", std::to_string(64 * megabyte), "--chunk", std::to_string(megabyte)});
    open();
    EXPECT_EQ(readString(), generatedText(64 * megabyte));
}

TEST_F(X11PasteboardReadingTests, DoesNotTrustAnAnnouncedSize) {
    const Program owner = startOwner({"normal", "--chunk", "4", "--hint", "4294967295"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, FailsOnAnEndlessTransfer) {
    limits_.maximumTextSize = megabyte;
    const Program owner = startOwner({"endless", "--size", "100000", "--chunk", "10000"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The text in the clipboard does not fit in memory"));
}

TEST_F(X11PasteboardReadingTests, FailsOnATextOverTheSizeLimit) {
    limits_.maximumTextSize = megabyte;
    const Program owner = startOwner({"normal", "--size", std::to_string(2 * megabyte)});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The text in the clipboard does not fit in memory"));
}

TEST_F(X11PasteboardReadingTests, ReadsItsOwnTextsWithoutARequest) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    // The loop does not run here, so a request to ourselves would never be answered.
    EXPECT_EQ(readString(), "list");
    EXPECT_EQ(read(PasteboardType::html), "<b>list</b>");
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, ContinuesAnOutgoingTransferAfterARead) {
    limits_.chunkSize = 1000;
    open();
    const std::string text = generatedText(100'000);
    ASSERT_TRUE(convert(text, "<b></b>"));
    const Program reader = startReader({"get", "UTF8_STRING", "--stop-after", "5000"});
    ASSERT_TRUE(turnUntilOutput(*reader, "stopped"));

    const Program owner =
        startOwner({"slow", "--text", "slow and steady", "--chunk", "2", "--delay", "50"});
    reader->sendSignal(SIGUSR1);
    // The reader requests the next piece while the pasteboard waits for the other owner.
    EXPECT_EQ(readString(), "slow and steady");
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), text);
}

} // namespace
