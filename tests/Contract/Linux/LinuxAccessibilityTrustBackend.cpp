#include "Platform/Linux/LinuxServices.h"
#include "tests/Contract/AccessibilityTrustContract.h"

namespace contract {

namespace {

class LinuxAccessibilityTrustBackend final : public AccessibilityTrustBackend {
  public:
    platform::AccessibilityTrust& trust() override { return trust_; }

  private:
    platform::LinuxAccessibilityTrust trust_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Linux,
    AccessibilityTrustContract,
    (backend<AccessibilityTrustBackend, LinuxAccessibilityTrustBackend>("Linux")),
    nameOfBackend<AccessibilityTrustBackend>);

} // namespace contract
