#include "tests/Desktop/ResidentTest.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {

using program_test::ResidentTest;
using program_test::wroteMessage;
using testing_support::ChildProcess;
using testing_support::waitUntil;

constexpr std::string_view launchedMessage = "Application launched successfully";

class InstanceTests : public ResidentTest {
  protected:
    /// Starts the program a second time and expects that start to fail with one line of reason.
    void expectUnreachable(const std::map<std::string, std::string>& environment) {
        const auto second = startAgain(environment);
        EXPECT_EQ(second->waitForExit(), 1);
        EXPECT_EQ(second->standardError(),
                  "pastewise: it is already running, but cannot be reached over the session bus\n");
    }

    /// Ends the program while a clipboard manager keeps its hand-over waiting, and expects a start
    /// in the meantime to become the running program.
    void restartDuringHandOver(const std::map<std::string, std::string>& environment) {
        const auto manager = startOwner({"manager-hang"});
        startProgram(environment);
        const auto owner = startOwner({"normal"});
        convert();
        program_->sendSignal(SIGTERM);
        ASSERT_TRUE(manager->waitForOutput("asked SAVE_TARGETS")) << program_->standardError();
        auto second = startAgain(environment);
        EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
        EXPECT_TRUE(second->waitForOutput(launchedMessage)) << second->standardError();
        EXPECT_TRUE(second->isRunning());
    }
};

TEST_F(InstanceTests, ASecondStartShowsThePreferencesOfTheFirstAndEnds) {
    startProgram();
    EXPECT_EQ(preferencesWindowCount(), 0U);
    const auto second = startAgain();
    EXPECT_EQ(second->waitForExit(), 0) << second->standardError();
    EXPECT_EQ(second->standardError().find(launchedMessage), std::string::npos);
    EXPECT_TRUE(waitForPreferencesInFront());
    EXPECT_EQ(logged("Instantiating PreferencesWindowController"), 1U);
    EXPECT_TRUE(program_->isRunning());
}

TEST_F(InstanceTests, ARestoredSessionLeavesTheFirstAlone) {
    startProgram();
    const auto restored = startAgain({}, {"sh", "-c", "exec \"$0\" -session 10abc_1700000000_2"});
    EXPECT_EQ(restored->waitForExit(), 0) << restored->standardError();
    EXPECT_EQ(restored->standardError().find(launchedMessage), std::string::npos);
    // Requests are carried out in order.
    activate("convert");
    ASSERT_TRUE(waitForLog(program_test::noTextMessage)) << program_->standardError();
    EXPECT_EQ(logged("Instantiating PreferencesWindowController"), 0U);
}

TEST_F(InstanceTests, EveryFurtherStartBringsTheSameWindowToTheFront) {
    startProgram();
    for (int i = 0; i < 3; ++i) {
        const auto other = openOtherWindow();
        const auto further = startAgain();
        EXPECT_EQ(further->waitForExit(), 0) << further->standardError();
        EXPECT_TRUE(waitForPreferencesInFront());
    }
    EXPECT_EQ(logged("Instantiating PreferencesWindowController"), 1U);
}

TEST_F(InstanceTests, AStartAfterTheEndOfTheFirstBecomesTheRunningProgram) {
    startProgram();
    endProgram();
    startProgram();
    EXPECT_EQ(preferencesWindowCount(), 0U);
}

TEST_F(InstanceTests, AStartWhileTheFirstHandsItsClipboardOverBecomesTheRunningProgram) {
    restartDuringHandOver({});
}

TEST_F(InstanceTests, TheDesktopsOwnShortcutConvertsLikeTheProgramsOwn) {
    startProgram();
    const auto owner = startOwner({"normal", "--text", "- tea\n- cake"});
    activate("convert");
    ASSERT_TRUE(waitForLog(wroteMessage)) << program_->standardError();
    EXPECT_EQ(paste("UTF8_STRING"), "tea\ncake");
    EXPECT_TRUE(waitForLog("Recording conversion - stickies: 2, source: "));
    EXPECT_TRUE(waitForLog("Updated time saved display to: 20s"));
}

TEST_F(InstanceTests, AnActionRepeatedByAHeldKeyConvertsOnce) {
    startProgram();
    const auto owner = startOwner({"normal"});
    waitForName();
    constexpr int repetitionCount = 20;
    std::vector<std::unique_ptr<ChildProcess>> repetitions;
    for (int i = 0; i < repetitionCount; ++i) {
        repetitions.push_back(requestAction("convert"));
        std::this_thread::sleep_for(std::chrono::milliseconds(30)); // as a held key repeats
    }
    for (const auto& repetition : repetitions) {
        EXPECT_EQ(repetition->waitForExit(), 0) << repetition->standardError();
    }
    ASSERT_TRUE(waitForLog(wroteMessage)) << program_->standardError();
    // A conversion by the shortcut now follows any that the repetitions caused.
    convert();
    EXPECT_EQ(logged(wroteMessage), 2U);
}

TEST_F(InstanceTests, TheActionConvertsAgainAfterItsKeyWasReleased) {
    startProgram();
    const auto owner = startOwner({"normal"});
    activate("convert");
    ASSERT_TRUE(waitForLog(wroteMessage)) << program_->standardError();
    EXPECT_TRUE(waitUntil([this] {
        std::this_thread::sleep_for(std::chrono::seconds(1)); // a pause between two presses
        activate("convert");
        return logged(wroteMessage) >= 2;
    }));
}

TEST_F(InstanceTests, QuitsWhenTheDesktopAsksForIt) {
    startProgram();
    activate("quit");
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
}

TEST_F(InstanceTests, ASecondStartSaysWhyItEndsIfTheFirstDoesNotRespond) {
    startProgram();
    program_->sendSignal(SIGSTOP);
    expectUnreachable({});
    program_->sendSignal(SIGCONT);
    const auto owner = startOwner({"normal"});
    convert();
}

TEST_F(InstanceTests, ASecondStartSaysWhyItEndsIfTheSessionBusHangs) {
    startProgram();
    session_.suspendBus(true);
    expectUnreachable({});
}

TEST_F(InstanceTests, WithoutASessionBusASecondStartSaysWhyItEnds) {
    const std::map<std::string, std::string> busless{{"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    startProgram(busless);
    expectUnreachable(busless);
    const auto owner = startOwner({"normal"});
    convert();
}

TEST_F(InstanceTests, OfTwoStartsOneOfWhichHasNoSessionBusOnlyTheFirstRuns) {
    const std::map<std::string, std::string> busless{{"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    const std::map<std::string, std::string> withBus;
    for (const auto& [environment, laterEnvironment] :
         {std::pair(busless, withBus), std::pair(withBus, busless)}) {
        startProgram(environment);
        expectUnreachable(laterEnvironment);
        const auto owner = startOwner({"normal"});
        convert();
        endProgram();
    }
}

TEST_F(InstanceTests, OfTwoStartsThatShareNoLockTheSecondShowsThePreferencesOfTheFirstAndEnds) {
    startProgram();
    const auto second = startAgain({{"XDG_RUNTIME_DIR", ""}});
    EXPECT_EQ(second->waitForExit(), 0) << second->standardError();
    EXPECT_TRUE(waitForPreferencesInFront());
    const auto owner = startOwner({"normal"});
    convert();
}

TEST_F(InstanceTests,
       WithoutASessionBusAStartWhileTheFirstHandsItsClipboardOverBecomesTheRunningProgram) {
    restartDuringHandOver({{"DBUS_SESSION_BUS_ADDRESS", "disabled:"}});
}

TEST_F(InstanceTests, WithoutASessionBusAStartAfterTheEndOfTheFirstBecomesTheRunningProgram) {
    const std::map<std::string, std::string> busless{{"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    startProgram(busless);
    program_->sendSignal(SIGKILL);
    EXPECT_EQ(program_->waitForExit(), 128 + SIGKILL);
    startProgram(busless);
    const auto owner = startOwner({"normal"});
    convert();
}

} // namespace
