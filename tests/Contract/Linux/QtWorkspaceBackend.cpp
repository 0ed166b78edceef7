#include "Platform/Linux/Qt/QtPermissions.h"
#include "tests/Contract/WorkspaceContract.h"
#include "tests/Support/EnvironmentVariable.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>

namespace contract {

namespace {

/// A desktop whose xdg-open appends its argument to a list.
class QtWorkspaceBackend final : public WorkspaceBackend {
  public:
    QtWorkspaceBackend() {
        std::ofstream(opener_) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >>\"" << list_.string()
                               << "\"\n";
        std::filesystem::permissions(opener_, std::filesystem::perms::owner_all);
    }

    platform::Workspace& workspace() override { return workspace_; }

    void removeHandlers() override { std::filesystem::remove(opener_); }

    bool hasOpened(const std::vector<std::string>& urls) override {
        return testing_support::QtTestLoop::turnUntil([&] { return opened() == urls; });
    }

  private:
    [[nodiscard]] std::vector<std::string> opened() const {
        std::vector<std::string> urls;
        std::ifstream list(list_);
        for (std::string url; std::getline(list, url);) {
            urls.push_back(url);
        }
        return urls;
    }

    testing_support::TemporaryFolder folder_;
    const std::filesystem::path opener_ = folder_.path() / "xdg-open";
    const std::filesystem::path list_ = folder_.path() / "opened";
    testing_support::QtDesktop desktop_;
    // Hides the installed browsers. Set once the desktop's programs have started.
    testing_support::EnvironmentVariable path_{"PATH", folder_.path().c_str()};
    testing_support::EnvironmentVariable browser_{"BROWSER", nullptr};
    platform::QtWorkspace workspace_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         WorkspaceContract,
                         (backend<WorkspaceBackend, QtWorkspaceBackend>("Qt")),
                         nameOfBackend<WorkspaceBackend>);

} // namespace contract
