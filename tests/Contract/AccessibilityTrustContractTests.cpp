#include "tests/Contract/AccessibilityTrustContract.h"

namespace contract {

TEST_P(AccessibilityTrustContract, ATrustedProgramIsTrustedWithThePromptAndWithout) {
    EXPECT_TRUE(backend_->trust().isProcessTrusted());
    EXPECT_TRUE(backend_->trust().isProcessTrustedWithPrompt());
}

TEST_P(AccessibilityTrustContract, ThePromptTakesNoTrustAway) {
    backend_->trust().isProcessTrustedWithPrompt();
    EXPECT_TRUE(backend_->trust().isProcessTrusted());
}

} // namespace contract
