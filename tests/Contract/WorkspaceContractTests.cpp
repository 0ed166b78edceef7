#include "Platform/Memory/MemoryPermissions.h"
#include "tests/Contract/WorkspaceContract.h"

namespace contract {

namespace {

class MemoryWorkspaceBackend final : public WorkspaceBackend {
  public:
    platform::Workspace& workspace() override { return workspace_; }

    void removeHandlers() override { workspace_.setRefuses(true); }

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

TEST_P(WorkspaceContract, PassesAUrlToTheSystem) {
    const std::string page = "https://example.org/path?query=1#part";
    EXPECT_TRUE(workspace_.openURL(page));
    EXPECT_TRUE(backend_->hasOpened({page}));
    const std::string settings = "x-settings:privacy?Part_A";
    EXPECT_TRUE(workspace_.openURL(settings));
    EXPECT_TRUE(backend_->hasOpened({page, settings}));
}

TEST_P(WorkspaceContract, RefusesTextThatIsNotAUrl) {
    for (const char* text : {"", "no scheme", "relative/path", "/etc/passwd", ":part", "1a:b"}) {
        EXPECT_FALSE(workspace_.openURL(text)) << text;
    }
    EXPECT_TRUE(backend_->hasOpened({}));
}

TEST_P(WorkspaceContract, ReturnsFalseIfTheSystemCannotOpenTheUrl) {
    backend_->removeHandlers();
    EXPECT_FALSE(workspace_.openURL("https://example.org/"));
}

} // namespace contract
