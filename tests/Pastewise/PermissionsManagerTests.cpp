#include "Pastewise/PermissionsManager.h"
#include "Platform/Memory/MemoryApplication.h"
#include "Platform/Memory/MemoryPermissions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using pastewise::PermissionsManager;
using testing::ElementsAre;
using testing::IsEmpty;

class PermissionsManagerTests : public testing::Test {
  protected:
    PermissionsManagerTests() { trust_.setTrusted(false); }

    void request() {
        PermissionsManager::requestAccessibilityPermissions(output_, trust_, alerts_, workspace_);
    }

    std::shared_ptr<platform::Journal> journal_ = std::make_shared<platform::Journal>();
    platform::MemoryStandardOutput output_{journal_};
    platform::MemoryAccessibilityTrust trust_{journal_};
    platform::MemoryAlerts alerts_{journal_};
    platform::MemoryWorkspace workspace_{journal_};
};

TEST_F(PermissionsManagerTests, ShowsItsAlert) {
    request();
    ASSERT_EQ(alerts_.shown().size(), 1U);
    const platform::Alert& alert = alerts_.shown().front();
    EXPECT_EQ(alert.messageText, "Accessibility Permissions Required");
    EXPECT_EQ(alert.informativeText,
              "Please enable Accessibility permissions in System Preferences > Security & Privacy "
              "> Privacy > Accessibility");
    EXPECT_EQ(alert.style, platform::AlertStyle::warning);
    EXPECT_THAT(alert.buttonTitles, ElementsAre("Open System Preferences", "Cancel"));
}

TEST_F(PermissionsManagerTests, WritesALineThenShowsTheSystemsPromptThenItsAlert) {
    alerts_.setAnswer(0);
    request();
    EXPECT_THAT(
        journal_->calls(),
        ElementsAre(
            "print Requesting accessibility permissions...",
            "prompt for trust",
            "alert Accessibility Permissions Required",
            "open "
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
}

TEST_F(PermissionsManagerTests, ShowsItsAlertWhateverTheSystemAnswers) {
    trust_.setTrusted(true);
    request();
    EXPECT_EQ(trust_.promptCount(), 1);
    EXPECT_EQ(alerts_.shown().size(), 1U);
}

TEST_F(PermissionsManagerTests, OpensThePrivacyPaneForTheFirstButton) {
    alerts_.setAnswer(0);
    request();
    EXPECT_THAT(
        workspace_.urls(),
        ElementsAre(
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    EXPECT_FALSE(trust_.isProcessTrusted());
    EXPECT_EQ(alerts_.shown().size(), 1U);
}

TEST_F(PermissionsManagerTests, OpensNothingForCancel) {
    alerts_.setAnswer(1);
    request();
    EXPECT_THAT(workspace_.urls(), IsEmpty());
}

TEST_F(PermissionsManagerTests, OpensNothingIfTheAlertIsClosedWithoutAButton) {
    alerts_.setAnswer(std::nullopt);
    request();
    EXPECT_EQ(alerts_.shown().size(), 1U);
    EXPECT_THAT(workspace_.urls(), IsEmpty());
}

TEST_F(PermissionsManagerTests, IgnoresAFailureToOpenThePane) {
    alerts_.setAnswer(0);
    workspace_.setRefuses(true);
    request();
    EXPECT_EQ(workspace_.urls().size(), 1U);
    EXPECT_EQ(alerts_.shown().size(), 1U);
    EXPECT_EQ(output_.lines().size(), 1U);
}

} // namespace
