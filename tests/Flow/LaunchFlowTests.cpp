#include "Pastewise/PastewiseApp.h"
#include "Platform/Memory/MemoryPlatform.h"
#include "tests/Support/CallOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using platform::MemoryPlatform;

class LaunchFlowTests : public testing::Test {
  protected:
    template <typename User>
    void run(User user) {
        system_.setUser([&user] { user(); });
        pastewise::PastewiseApp app(system_);
        EXPECT_EQ(app.main(), 0);
    }

    void run() {
        run([] {});
    }

    std::vector<std::string> lines() { return system_.standardOutput().lines(); }

    MemoryPlatform system_;
};

TEST_F(LaunchFlowTests, TheFirstLaunchLogsEachStepInOrder) {
    run();
    EXPECT_EQ(
        system_.logSink().messages(),
        (std::vector<std::string>{
            "debug: Initializing AnalyticsManager",
            "debug: Initializing AppState with shouldFlashSavings = true",
            "debug: checkPermissions placeholder invoked",
            "debug: Initializing AppState with shouldFlashSavings = true",
            "debug: checkPermissions placeholder invoked",
            "debug: Application launching with condensed status interface",
            "debug: Falling back to drawn glyph for base status icon",
            "debug: Status bar configured to show icon only with dropdown menu",
            "debug: Initializing ShortcutManager",
            "debug: Loading saved shortcut",
            "debug: No saved shortcut found or invalid data - setting up default shortcut",
            "debug: Shortcut handler registered - default shortcut handled by ShortcutManager",
            "debug: Ensuring persistent data is loaded from storage",
            "debug: Refreshing AppState from persistent analytics storage",
            "debug: Application launched successfully"}));
    std::vector<std::string> categories;
    for (const auto& entry : system_.logSink().entries()) {
        if (categories.empty() || categories.back() != entry.category) {
            categories.push_back(entry.category);
        }
    }
    EXPECT_EQ(categories,
              (std::vector<std::string>{"AnalyticsManager",
                                        "AppState",
                                        "AppDelegate",
                                        "ShortcutManager",
                                        "AppDelegate",
                                        "AppState",
                                        "AppDelegate"}));
    EXPECT_EQ(lines(), (std::vector<std::string>{"Checking accessibility permissions..."}));
}

TEST_F(LaunchFlowTests, ALaunchUsesTheSystemInOrder) {
    system_.accessibilityTrust().setTrusted(false);
    run([this] {
        EXPECT_TRUE(testing_support::madeInOrder(
            system_.journal(),
            {"log debug: Application launching with condensed status interface",
             "print Checking accessibility permissions...",
             "check trust",
             "print Requesting accessibility permissions...",
             "alert Accessibility Permissions Required",
             "make status item",
             "show icon",
             "set menu",
             "log debug: Status bar configured to show icon only with dropdown menu",
             "log debug: Initializing ShortcutManager",
             "register 5 0x100 as QZhk 1",
             "store userDefinedShortcut",
             "log debug: Shortcut handler registered - default shortcut handled by ShortcutManager",
             "log debug: Application launched successfully",
             "set requests"}));
    });
}

TEST_F(LaunchFlowTests, ALaunchInstallsTheSavedShortcut) {
    system_.userDefaults().setObject(
        "userDefinedShortcut",
        foundation::Dictionary{{"keyCode", std::uint64_t{40}},
                               {"modifiers", std::uint64_t{0x120000}}});
    run([this] {
        EXPECT_EQ(system_.eventHotKeyService().registered(),
                  (std::vector<platform::MemoryEventHotKeyService::Combination>{{40, 0x300}}));
        EXPECT_EQ(system_.statusBar().item()->menu()->items()[3]->title(),
                  "Shortcut: Command + Shift K");
    });
    const auto messages = system_.logSink().messages();
    const auto found = std::find(messages.begin(),
                                 messages.end(),
                                 "debug: Found saved shortcut - KeyCode: 40, Modifiers: 1179648");
    ASSERT_NE(found, messages.end());
    EXPECT_EQ(*(found + 1), "debug: Successfully created Key from carbon code");
}

TEST_F(LaunchFlowTests, WithTrustThereIsNeitherPromptNorAlert) {
    run();
    EXPECT_TRUE(system_.alerts().shown().empty());
    EXPECT_EQ(system_.accessibilityTrust().promptCount(), 0);
    EXPECT_EQ(lines(), (std::vector<std::string>{"Checking accessibility permissions..."}));
}

class UntrustedLaunchFlowTests : public LaunchFlowTests,
                                 public testing::WithParamInterface<std::optional<std::size_t>> {};

TEST_P(UntrustedLaunchFlowTests, ShowsTheAlertBeforeTheStatusItemWhateverTheAnswer) {
    system_.accessibilityTrust().setTrusted(false);
    bool wasAlertShown = false;
    system_.alerts().setAnswer(GetParam());
    system_.alerts().setWhileShown([&] {
        wasAlertShown = true;
        EXPECT_EQ(system_.statusBar().item(), nullptr);
        EXPECT_EQ(system_.accessibilityTrust().promptCount(), 1);
    });
    run([this] {
        EXPECT_NE(system_.statusBar().item(), nullptr);
        EXPECT_EQ(system_.eventHotKeyService().registered().size(), 1U);
    });
    EXPECT_TRUE(wasAlertShown);
    EXPECT_EQ(system_.workspace().urls().size(), GetParam() == 0U ? 1U : 0U);
    EXPECT_EQ(lines(),
              (std::vector<std::string>{"Checking accessibility permissions...",
                                        "Requesting accessibility permissions..."}));
}

INSTANTIATE_TEST_SUITE_P(EachAnswer,
                         UntrustedLaunchFlowTests,
                         testing::Values(std::optional<std::size_t>(0),
                                         std::optional<std::size_t>(1),
                                         std::nullopt));

TEST_F(LaunchFlowTests, TheDesktopCanOpenThePreferences) {
    run([this] {
        system_.application().ask(&platform::Application::Requests::openPreferences);
        ASSERT_EQ(system_.toolkit().windows().size(), 1U);
        EXPECT_TRUE(system_.toolkit().windows().front()->isVisible());
        EXPECT_EQ(system_.application().activationCount(), 1);
    });
}

TEST_F(LaunchFlowTests, TheDesktopCanRequestAConversion) {
    system_.pasteboard().copyElsewhere("• a\n• b");
    run([this] {
        system_.logSink().clear();
        system_.application().ask(&platform::Application::Requests::convert);
        EXPECT_EQ(system_.pasteboard().contents().at(platform::PasteboardType::string), "a\nb");
        const auto messages = system_.logSink().messages();
        ASSERT_FALSE(messages.empty());
        EXPECT_EQ(messages.front(), "debug: Conversion requested; attempting clipboard conversion");
        EXPECT_NE(std::find(messages.begin(),
                            messages.end(),
                            "debug: Recording conversion - stickies: 2, source: manual"),
                  messages.end());
    });
}

TEST_F(LaunchFlowTests, TheDesktopCanOfferARefusedShortcutAgain) {
    system_.eventHotKeyService().takeElsewhere({5, 0x100});
    run([this] {
        EXPECT_TRUE(system_.eventHotKeyService().registered().empty());
        system_.eventHotKeyService().giveBackElsewhere({5, 0x100});
        system_.application().ask(&platform::Application::Requests::retryShortcut);
        EXPECT_EQ(system_.eventHotKeyService().registered().size(), 1U);
    });
}

TEST_F(LaunchFlowTests, RequestsAreIgnoredOnceTheApplicationIsGone) {
    system_.pasteboard().copyElsewhere("• a");
    run();
    system_.application().ask(&platform::Application::Requests::convert);
    system_.application().ask(&platform::Application::Requests::openPreferences);
    EXPECT_EQ(system_.pasteboard().contents().at(platform::PasteboardType::string), "• a");
    EXPECT_TRUE(system_.toolkit().windows().empty());
}

TEST_F(LaunchFlowTests, RepeatedRequestsWhileAKeyIsHeldConvertOnce) {
    system_.pasteboard().copyElsewhere("a");
    run([this] {
        const auto convert = [this] {
            system_.application().ask(&platform::Application::Requests::convert);
        };
        convert();
        const auto count = system_.pasteboard().changeCount();
        system_.mainQueue().advance(660ms);
        system_.journal().clear();
        for (int repeat = 0; repeat < 50; ++repeat) {
            convert();
            system_.mainQueue().advance(40ms);
        }
        EXPECT_EQ(system_.pasteboard().changeCount(), count);
        EXPECT_EQ(system_.journal().only({"log debug: Repeated conversion request dropped"}).size(),
                  50U);
        system_.mainQueue().advance(750ms);
        convert();
        EXPECT_GT(system_.pasteboard().changeCount(), count);
    });
}

} // namespace
