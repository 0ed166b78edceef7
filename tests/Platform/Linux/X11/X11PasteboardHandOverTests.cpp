#include "tests/Desktop/GeneratedText.h"
#include "tests/Platform/Linux/X11/X11ClipboardTest.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

using testing_support::ChildProcess;
using testing_support::generatedText;

class X11PasteboardHandOverTests : public testing_support::X11ClipboardTest {
  protected:
    /// Starts a desktop's clipboard manager on a private session bus and waits until it is ready.
    Program startManager() {
        auto environment = server_->environment();
        environment["NO_AT_BRIDGE"] = "1";
        bus_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--print-address=1"},
            ChildProcess::Options{environment, {}, {}});
        EXPECT_TRUE(bus_->waitForOutput("unix:")) << bus_->standardError();
        const std::string& address = bus_->standardOutput();
        environment["DBUS_SESSION_BUS_ADDRESS"] = address.substr(0, address.find('\n'));
        auto manager = std::make_unique<ChildProcess>(
            std::vector<std::string>{"xfsettingsd", "--no-daemon", "--disable-wm-check"},
            ChildProcess::Options{environment, {}, {}});
        EXPECT_TRUE(turnUntil([&] {
            const Program probe =
                startReader({"targets", "--selection", "CLIPBOARD_MANAGER", "--timeout", "1000"});
            return turnUntilEnd(*probe) == 0;
        })) << manager->standardError();
        return manager;
    }

    /// A limit so long that a hand-over that waits for it times out the test.
    static constexpr std::chrono::hours longTime{1};

  private:
    /// The manager's session bus, which stops whatever runs on it.
    Program bus_;
};

TEST_F(X11PasteboardHandOverTests, LeavesBothTypesToTheClipboardManager) {
    const Program manager = startManager();
    open();
    ASSERT_TRUE(convert("caf\xC3\xA9", "<b>caf\xC3\xA9</b>"));
    pasteboard_->handOver();
    pasteboard_.reset();
    EXPECT_TRUE(sink_.entries().empty());
    ASSERT_TRUE(turnUntil([&] { return readElsewhere("TARGETS").has_value(); }));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "caf\xC3\xA9");
    EXPECT_EQ(readElsewhere("text/html"), "<b>caf\xC3\xA9</b>");
}

TEST_F(X11PasteboardHandOverTests, LeavesLongTextsToTheClipboardManager) {
    const Program manager = startManager();
    limits_.chunkSize = 5000;
    open();
    ASSERT_TRUE(convert(generatedText(1'000'000), generatedText(2'000'000)));
    pasteboard_->handOver();
    pasteboard_.reset();
    EXPECT_TRUE(sink_.entries().empty());
    ASSERT_TRUE(turnUntil([&] { return readElsewhere("TARGETS").has_value(); }));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), generatedText(1'000'000));
    EXPECT_EQ(readElsewhere("text/html"), generatedText(2'000'000));
}

TEST_F(X11PasteboardHandOverTests, GivesUpAnUnresponsiveClipboardManager) {
    const Program manager = startOwner({"manager-hang"});
    beImpatient();
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const auto start = std::chrono::steady_clock::now();
    pasteboard_->handOver();
    EXPECT_LT(std::chrono::steady_clock::now() - start, testing_support::patience);
    EXPECT_TRUE(hasLogged("The clipboard manager does not respond"));
    EXPECT_TRUE(manager->waitForOutput("asked SAVE_TARGETS"));
}

TEST_F(X11PasteboardHandOverTests, DoesNotWaitForAClipboardManagerThatRefuses) {
    const Program manager = startOwner({"manager-refuse"});
    limits_.silence = longTime;
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    pasteboard_->handOver();
    ASSERT_EQ(sink_.entries().size(), 1U);
    EXPECT_TRUE(hasLogged("The clipboard manager refuses to save the clipboard"));
    EXPECT_EQ(readElsewhere("UTF8_STRING"), "list");
}

TEST_F(X11PasteboardHandOverTests, NeverMistakesALateAnswerForTheNextOne) {
    const Program manager = startOwner({"manager-late", "--delay", "2000"});
    beImpatient();
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    pasteboard_->handOver();
    ASSERT_TRUE(manager->waitForOutput("answered SAVE_TARGETS"));
    pasteboard_->handOver();
    EXPECT_FALSE(hasLogged("The clipboard manager refuses to save the clipboard"));
}

TEST_F(X11PasteboardHandOverTests, GivesUpAnUnresponsiveManagerWhileOthersKeepRequesting) {
    const Program manager = startOwner({"manager-hang"});
    beImpatient();
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const std::string reading = std::string(CLIPBOARD_READER) + " get UTF8_STRING; echo done";
    ChildProcess others({"sh", "-c", "while sleep 0.1; do " + reading + "; done"},
                        ChildProcess::Options{server_->environment(), {}, {}});
    ASSERT_TRUE(turnUntilOutput(others, "done"));
    const auto start = std::chrono::steady_clock::now();
    pasteboard_->handOver();
    EXPECT_LT(std::chrono::steady_clock::now() - start, testing_support::patience);
    EXPECT_TRUE(hasLogged("The clipboard manager does not respond"));
}

TEST_F(X11PasteboardHandOverTests, DoesNotWaitWithoutAClipboardManager) {
    limits_.silence = longTime;
    open();
    ASSERT_TRUE(convert("list", "<b>list</b>"));
    pasteboard_->handOver();
    EXPECT_TRUE(sink_.entries().empty());
}

TEST_F(X11PasteboardHandOverTests, MakesNoRequestIfItOwnsNothing) {
    limits_.silence = longTime;
    const Program manager = startOwner({"manager-hang"});
    open();
    pasteboard_->handOver();

    ASSERT_TRUE(convert("list", "<b>list</b>"));
    const Program other = startOwner({"normal"});
    pasteboard_->handOver();
    EXPECT_EQ(manager->standardOutput().find("asked"), std::string::npos);
}

} // namespace
