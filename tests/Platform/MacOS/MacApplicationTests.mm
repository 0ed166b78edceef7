#import "Platform/MacOS/MacApplication.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Each case runs the application in a process of its own.
class MacApplicationDeathTests : public testing::Test {
  protected:
    MacApplicationDeathTests() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    /// Does what the system does when the user opens the program again.
    static void openAgain() {
        [NSApp.delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:NO];
    }

    static void note(const char* event) { std::fprintf(stderr, "<%s>", event); }
};

TEST_F(MacApplicationDeathTests, LaunchesOnceTheLoopRunsAndEndsTheProcess) {
    const auto run = [] {
        const testing_support::AppKitLoop loop;
        platform::MacApplication application;
        note("run");
        application.run([&] {
            note("launch");
            application.terminate();
        });
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "<run><launch>");
}

TEST_F(MacApplicationDeathTests, OpensThePreferencesAtASecondStart) {
    const auto run = [] {
        const testing_support::AppKitLoop loop;
        platform::MacApplication application;
        application.run([&] {
            application.setRequests({.convert = [] { note("convert"); },
                                     .openPreferences = [] { note("preferences"); },
                                     .retryShortcut = {}});
            openAgain();
            openAgain();
            application.terminate();
        });
    };
    EXPECT_EXIT(run(),
                testing::ExitedWithCode(0),
                AllOf(HasSubstr("<preferences><preferences>"),
                      Not(HasSubstr("<preferences><preferences><preferences>"))));
}

TEST_F(MacApplicationDeathTests, AnswersAnEarlyRequestOnce) {
    const auto run = [] {
        const testing_support::AppKitLoop loop;
        platform::MacApplication application;
        application.run([&] {
            openAgain();
            note("launched");
            application.setRequests(
                {.convert = {}, .openPreferences = [] { note("first"); }, .retryShortcut = {}});
            application.setRequests(
                {.convert = {}, .openPreferences = [] { note("second"); }, .retryShortcut = {}});
            application.terminate();
        });
    };
    EXPECT_EXIT(run(),
                testing::ExitedWithCode(0),
                AllOf(HasSubstr("<launched><first>"), Not(HasSubstr("<first><"))));
}

} // namespace
