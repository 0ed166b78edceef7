#pragma once

#include "Foundation/Interface.h"
#include "Platform/Permissions.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace contract {

/// A workspace and the system that opens its URLs.
class WorkspaceBackend : public foundation::Interface {
  public:
    virtual platform::Workspace& workspace() = 0;
    /// Leaves the system without any handler for URLs.
    virtual void removeHandlers() = 0;
    /// Whether the system has been asked to open exactly these so far. Waits for them.
    virtual bool hasOpened(const std::vector<std::string>& urls) = 0;
};

class WorkspaceContract : public testing::TestWithParam<BackendMaker<WorkspaceBackend>> {
  protected:
    std::unique_ptr<WorkspaceBackend> backend_ = GetParam().make();
    platform::Workspace& workspace_ = backend_->workspace();
};

} // namespace contract
