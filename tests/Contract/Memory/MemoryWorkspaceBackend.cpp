#include "Platform/Memory/MemoryWorkspace.h"
#include "tests/Contract/WorkspaceContract.h"

namespace contract {

namespace {

class MemoryWorkspaceBackend final : public WorkspaceBackend {
  public:
    platform::Workspace& workspace() override { return workspace_; }

    void takeOpenersAway() override { workspace_.setRefuses(true); }

    bool hasOpened(const std::vector<std::string>& urls) override {
        return workspace_.urls() == urls;
    }

  private:
    platform::MemoryWorkspace workspace_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         WorkspaceContract,
                         (backend<WorkspaceBackend, MemoryWorkspaceBackend>("Memory")),
                         nameOfBackend<WorkspaceBackend>);

} // namespace contract
