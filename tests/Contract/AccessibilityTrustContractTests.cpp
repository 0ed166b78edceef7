#include "Platform/Memory/MemoryPermissions.h"
#include "tests/Contract/AccessibilityTrustContract.h"

namespace contract {

namespace {

class MemoryAccessibilityTrustBackend final : public AccessibilityTrustBackend {
  public:
    platform::AccessibilityTrust& trust() override { return trust_; }

  private:
    platform::MemoryAccessibilityTrust trust_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Memory,
    AccessibilityTrustContract,
    (backend<AccessibilityTrustBackend, MemoryAccessibilityTrustBackend>("Memory")),
    nameOfBackend<AccessibilityTrustBackend>);

TEST_P(AccessibilityTrustContract, ATrustedProgramIsTrustedWithAndWithoutThePrompt) {
    EXPECT_TRUE(backend_->trust().isProcessTrusted());
    EXPECT_TRUE(backend_->trust().isProcessTrustedWithPrompt());
}

TEST_P(AccessibilityTrustContract, ThePromptDoesNotRevokeTrust) {
    backend_->trust().isProcessTrustedWithPrompt();
    EXPECT_TRUE(backend_->trust().isProcessTrusted());
}

} // namespace contract
