#include "Platform/Linux/Qt/QtToolkit.h"
#include "Platform/Linux/Qt/QtViews.h"
#include "tests/Contract/ToolkitContract.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <QPushButton>

namespace contract {

namespace {

class QtToolkitBackend final : public ToolkitBackend {
  public:
    platform::Toolkit& toolkit() override { return toolkit_; }

    void press(platform::Button& button) override {
        dynamic_cast<QPushButton&>(platform::widgetOf(button)).click();
    }

    void settle() override { testing_support::QtTestLoop::turn(); }

  private:
    testing_support::QtDesktop desktop_;
    platform::QtToolkit toolkit_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         ToolkitContract,
                         (backend<ToolkitBackend, QtToolkitBackend>("Qt")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Linux,
                         ToolkitContractDeathTests,
                         (backend<ToolkitBackend, QtToolkitBackend>("Qt")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Linux,
                         WindowContract,
                         (backend<ToolkitBackend, QtToolkitBackend>("Qt")),
                         nameOfBackend<ToolkitBackend>);

} // namespace contract
