#include "Platform/Memory/MemoryButton.h"
#include "Platform/Memory/MemoryToolkit.h"
#include "tests/Contract/ToolkitContract.h"

namespace contract {

namespace {

class MemoryToolkitBackend final : public ToolkitBackend {
  public:
    platform::Toolkit& toolkit() override { return toolkit_; }

    void press(platform::Button& button) override {
        dynamic_cast<platform::MemoryButton&>(button).press();
    }

    void settle() override {}

  private:
    platform::MemoryToolkit toolkit_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         ToolkitContract,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Memory,
                         ToolkitContractDeathTests,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

INSTANTIATE_TEST_SUITE_P(Memory,
                         WindowContract,
                         (backend<ToolkitBackend, MemoryToolkitBackend>("Memory")),
                         nameOfBackend<ToolkitBackend>);

} // namespace contract
