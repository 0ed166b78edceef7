#include "Platform/Linux/X11/X11Connection.h"
#include "tests/Desktop/GeneratedText.h"
#include "tests/Platform/Linux/X11/X11ClipboardTest.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <utility>

namespace {

using foundation::TextBuffer;
using platform::PasteboardType;
using testing_support::generatedText;

constexpr std::size_t megabyte = std::size_t{1024} * 1024;

class X11PasteboardReadingTests : public testing_support::X11ClipboardTest {
  protected:
    /// Expects that the owner yields no text within a bound that tells bounded from hanging, and
    /// that it still owns what it owned.
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

    /// How many windows of the server still hold an answer to the pasteboard.
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

    /// The targets that the owner was asked for, in order.
    static std::string asked(testing_support::ChildProcess& owner, const std::string& last) {
        EXPECT_TRUE(owner.waitForOutput("asked " + last + "\n"));
        const std::string& output = owner.standardOutput();
        return output.substr(output.find('\n') + 1);
    }
};

TEST_F(X11PasteboardReadingTests, ReadsTheTextOfAnOwnerOfSeveralForms) {
    const Program owner = startOwner({"normal"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
    EXPECT_EQ(read(PasteboardType::html), "<b>milk</b>");
}

TEST_F(X11PasteboardReadingTests, AsksForTheListFirstAndThenForTheBestFormOnIt) {
    const Program owner = startOwner({"normal"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
    EXPECT_EQ(asked(*owner, "UTF8_STRING"), "asked TARGETS\nasked UTF8_STRING\n");
}

TEST_F(X11PasteboardReadingTests, TurnsATextThatIsOnlyThereInLatin1IntoUtf8) {
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

TEST_F(X11PasteboardReadingTests, ReadsFromAnOwnerThatCannotListWhatItHas) {
    const Program owner = startOwner({"no-targets"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, TakesAnEmptyTextForAText) {
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

TEST_F(X11PasteboardReadingTests, FindsNothingWhereNobodyOwnsTheClipboard) {
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, FindsNoTextInAnImage) {
    expectNoText({"image"});
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, FindsNoTextInFilesThatAFileManagerCopied) {
    expectNoText({"files"});
}

TEST_F(X11PasteboardReadingTests, FindsNoTextInAListOfFileAddresses) {
    expectNoText({"file-uris"});
}

TEST_F(X11PasteboardReadingTests, ReadsTheTextOfACopiedLink) {
    const Program owner = startOwner({"link"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, ReadsTheTextOfCellsThatAreOfferedAsAnImageToo) {
    const Program owner = startOwner({"spreadsheet"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, LeavesThePrimarySelectionAlone) {
    const Program owner = startOwner({"normal", "--selection", "PRIMARY"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(convert("ours", "<i>ours</i>"));
    const Program reader = startReader({"get", "UTF8_STRING", "--selection", "PRIMARY"});
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, TakesARefusalForNoText) {
    expectNoText({"refuse"});
    EXPECT_TRUE(hasLogged("The clipboard owner refuses to convert its text"));
}

TEST_F(X11PasteboardReadingTests, TakesTheRefusalOfEveryListedFormForNoText) {
    expectNoText({"refuse-text"});
    EXPECT_TRUE(hasLogged("The clipboard owner refuses to convert its text"));
}

TEST_F(X11PasteboardReadingTests, TakesAnAnswerThatIsNotMadeOfBytesForNoText) {
    expectNoText({"wrong-format"});
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatHangs) {
    expectNoText({"hang"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatHangsAfterItsList) {
    expectNoText({"hang-text"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatStallsInTheMiddleOfATransfer) {
    expectNoText({"stall"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatSendsEventsWithoutAnEndInsteadOfAnAnswer) {
    expectNoText({"flood"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatTellsOfPiecesWithoutAnEndAndSendsNone) {
    expectNoText({"flood-pieces"});
    EXPECT_TRUE(hasLogged("The clipboard owner does not respond"));
}

TEST_F(X11PasteboardReadingTests, GivesUpATransferThatGoesOnInAnotherForm) {
    const Program owner = startOwner({"mixed"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner violates the transfer protocol"));
    EXPECT_TRUE(owner->waitForOutput("asked UTF8_STRING\n"));
    EXPECT_EQ(owner->standardOutput().find("asked STRING"), std::string::npos);
    EXPECT_EQ(owner->standardOutput().find("asked text/plain"), std::string::npos);
}

TEST_F(X11PasteboardReadingTests, WaitsForASlowTransferForAsLongAsItGoesOn) {
    const std::string text = generatedText(100);
    const Program owner = startOwner({"slow", "--size", "100", "--chunk", "10", "--delay", "100"});
    beImpatient();
    open();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(readString(), text);
    EXPECT_GT(std::chrono::steady_clock::now() - start, limits_.silence);
}

TEST_F(X11PasteboardReadingTests, GivesUpAnOwnerThatEndsInTheMiddleOfATransfer) {
    const Program owner = startOwner({"die"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner changed during a read"));
}

TEST_F(X11PasteboardReadingTests, GivesUpWhenTheOwnerChangesInTheMiddleOfATransfer) {
    const Program owner = startOwner({"change"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The clipboard owner changed during a read"));
}

TEST_F(X11PasteboardReadingTests, NeverTakesALateAnswerForTheAnswerToTheNextQuestion) {
    const Program late = startOwner({"late-text", "--delay", "900", "--text", "too late"});
    beImpatient();
    open();
    EXPECT_EQ(readString(), std::nullopt);
    const Program next =
        startOwner({"slow", "--text", "in time", "--chunk", "1", "--delay", "100"});
    // The late answer comes while this one is on its way.
    EXPECT_EQ(readString(), "in time");
    EXPECT_TRUE(late->waitForOutput("answered UTF8_STRING"));
    EXPECT_TRUE(late->isRunning());
    EXPECT_TRUE(turnUntil([&] { return answersLeftOnTheServer() == 0; }));
}

TEST_F(X11PasteboardReadingTests, ReadsATextThatComesInSmallPieces) {
    const Program owner = startOwner({"normal", "--size", "10000", "--chunk", "7"});
    open();
    EXPECT_EQ(readString(), generatedText(10'000));
}

TEST_F(X11PasteboardReadingTests,
       ReadsALongTextThatComesInSmallPiecesInTimeThatGrowsWithItsLength) {
    const Program owner =
        startOwner({"normal", "--size", std::to_string(8 * megabyte), "--chunk", "64"});
    open();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(readString(), generatedText(8 * megabyte));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3 * testing_support::patience);
}

TEST_F(X11PasteboardReadingTests, ReadsALongTextThatComesInOnePiece) {
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

TEST_F(X11PasteboardReadingTests, DoesNotTrustTheSizeThatATransferAnnounces) {
    const Program owner = startOwner({"normal", "--chunk", "4", "--hint", "4294967295"});
    open();
    EXPECT_EQ(readString(), "milk\nbread");
}

TEST_F(X11PasteboardReadingTests, EndsATransferThatHasNoEndWithAnError) {
    limits_.maximumTextSize = megabyte;
    const Program owner = startOwner({"endless", "--size", "100000", "--chunk", "10000"});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The text in the clipboard does not fit in memory"));
}

TEST_F(X11PasteboardReadingTests, ReportsALongTextInOnePieceThatDoesNotFitInMemory) {
    limits_.maximumTextSize = megabyte;
    const Program owner = startOwner({"normal", "--size", std::to_string(2 * megabyte)});
    open();
    EXPECT_EQ(readString(), std::nullopt);
    EXPECT_TRUE(hasLogged("The text in the clipboard does not fit in memory"));
}

TEST_F(X11PasteboardReadingTests, AnswersFromItsOwnTextsWhileItOwnsTheClipboard) {
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    // Nobody turns the loop here, so that asking ourselves through the server would hang.
    EXPECT_EQ(readString(), "list");
    EXPECT_EQ(read(PasteboardType::html), "<b>list</b>");
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardReadingTests, GoesOnWithATransferToAnotherProgramAfterAReading) {
    limits_.chunkSize = 1000;
    open();
    const std::string text = generatedText(100'000);
    ASSERT_TRUE(convert(text, "<b></b>"));
    const Program reader = startReader({"get", "UTF8_STRING", "--stop-after", "5000"});
    ASSERT_TRUE(turnUntilOutput(*reader, "stopped"));

    const Program owner =
        startOwner({"slow", "--text", "slow and steady", "--chunk", "2", "--delay", "50"});
    reader->sendSignal(SIGUSR1);
    // What the reader asks for arrives while the pasteboard waits for somebody else.
    EXPECT_EQ(readString(), "slow and steady");
    EXPECT_EQ(turnUntilEnd(*reader), 0);
    EXPECT_EQ(reader->standardOutput(), text);
}

} // namespace
