#include "Platform/Memory/MemoryAccessibilityTrust.h"
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

} // namespace contract
