#import "Platform/MacOS/MacViews.h"
#include "tests/Contract/ToolkitContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

namespace contract {

namespace {

class MacToolkitBackend final : public ToolkitBackend {
  public:
    /// A forked process cannot use the system's toolkit.
    MacToolkitBackend() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    platform::Toolkit& toolkit() override { return toolkit_; }

    void press(platform::Button& button) override {
        [static_cast<NSButton*>(platform::MacViewNode::nsView(button)) performClick:nil];
    }

    void settle() override { testing_support::AppKitLoop::turn(); }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacToolkit toolkit_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         ToolkitContract,
                         (backend<ToolkitBackend, MacToolkitBackend>("Mac")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(MacOS,
                         ToolkitContractDeathTests,
                         (backend<ToolkitBackend, MacToolkitBackend>("Mac")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(MacOS,
                         WindowContract,
                         (backend<ToolkitBackend, MacToolkitBackend>("Mac")),
                         nameOfBackend<ToolkitBackend>);

} // namespace contract
