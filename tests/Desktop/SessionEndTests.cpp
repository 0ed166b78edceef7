#include "tests/Desktop/ResidentTest.h"

#include <csignal>
#include <string>

namespace program_test {

namespace {

using testing_support::ChildProcess;
using testing_support::waitUntil;

class SessionEndTests : public ResidentTest {
  protected:
    /// Starts a clipboard manager.
    void startClipboardManager() {
        clipboardManager_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{"xfsettingsd", "--no-daemon"},
            ChildProcess::Options{.environment = session_.environment()});
        ASSERT_TRUE(waitUntil([this] {
            ChildProcess query({PASTEWISE_CLIPBOARD_READER,
                                "targets",
                                "--selection",
                                "CLIPBOARD_MANAGER",
                                "--timeout",
                                "1000"},
                               {.environment = session_.environment()});
            return query.waitForExit() == 0;
        })) << clipboardManager_->standardError();
    }

    /// Starts the program under a session manager, and an owner of the clipboard.
    void startInSession() {
        sessionManager_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{PASTEWISE_SESSION_MANAGER},
            ChildProcess::Options{.environment = session_.environment()});
        // The library may have something to say on standard error first.
        ASSERT_TRUE(waitUntil([this] { return sessionManager_->standardOutput().ends_with('\n'); }))
            << sessionManager_->standardError();
        const std::string line = sessionManager_->standardOutput();
        const std::string prefix = "address ";
        ASSERT_TRUE(line.starts_with(prefix)) << line;
        startProgram(
            {{"SESSION_MANAGER", line.substr(prefix.size(), line.find('\n') - prefix.size())}});
        ASSERT_TRUE(sessionManager_->waitForOutput("registered"));
        owner_ = startOwner({"normal", "--text", "- tea\n- cake"});
    }

    std::unique_ptr<ChildProcess> clipboardManager_;
    std::unique_ptr<ChildProcess> sessionManager_;
    std::unique_ptr<ChildProcess> owner_;
};

TEST_F(SessionEndTests, TheEndOfTheSessionHandsTheClipboardOverAndQuitsTheProgram) {
    startClipboardManager();
    startInSession();
    convert();
    const std::string html = paste("text/html");
    sessionManager_->sendSignal(SIGUSR1);
    ASSERT_TRUE(sessionManager_->waitForOutput("saved"));
    sessionManager_->sendSignal(SIGUSR1);
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
    EXPECT_TRUE(sessionManager_->waitForOutput("closed"));
    EXPECT_EQ(paste("UTF8_STRING"), "tea\ncake");
    EXPECT_EQ(paste("text/html"), html);
}

TEST_F(SessionEndTests, AfterTheSessionHasSavedAKilledProgramLosesNeitherClipboardNorSettings) {
    startClipboardManager();
    startInSession();
    convert();
    sessionManager_->sendSignal(SIGUSR1);
    ASSERT_TRUE(sessionManager_->waitForOutput("saved"));
    program_->sendSignal(SIGKILL);
    EXPECT_EQ(program_->waitForExit(), 128 + SIGKILL);
    EXPECT_EQ(paste("UTF8_STRING"), "tea\ncake");
    ASSERT_TRUE(settings().has_value());
    EXPECT_EQ(settings()->savedSeconds(), 20);
}

TEST_F(SessionEndTests, AClipboardManagerKeepsTheConversionAfterTheProgramEnds) {
    startClipboardManager();
    startProgram();
    const auto owner = startOwner({"normal", "--text", "- tea\n- cake"});
    convert();
    const std::string html = paste("text/html");
    program_->sendSignal(SIGTERM);
    ASSERT_EQ(program_->waitForExit(), 0) << program_->standardError();
    EXPECT_EQ(paste("UTF8_STRING"), "tea\ncake");
    EXPECT_EQ(paste("text/html"), html);
}

} // namespace

} // namespace program_test
