#include "Platform/Linux/LinuxAccessibilityTrust.h"

#include <gtest/gtest.h>

namespace {

TEST(LinuxAccessibilityTrustTests, TrustsEveryProgram) {
    platform::LinuxAccessibilityTrust trust;
    EXPECT_TRUE(trust.isProcessTrusted());
    EXPECT_TRUE(trust.isProcessTrustedWithPrompt());
}

} // namespace
