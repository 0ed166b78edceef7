#pragma once

#include "Foundation/Interface.h"
#include "Platform/StatusBar.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/SampleMenu.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace contract {

/// A status bar and its user.
class StatusBarBackend : public foundation::Interface {
  public:
    /// Creates an item with an image and returns once it is shown.
    virtual std::unique_ptr<platform::StatusItem>
    makeItem(const std::shared_ptr<platform::Menu>& menu) = 0;
    virtual void open() = 0;
    /// The title that the first row shows.
    virtual std::string firstTitle() = 0;
    virtual void choose(const std::string& title) = 0;
    [[nodiscard]] virtual bool isShown() = 0;
    /// Runs the system until the condition holds or `patience` has passed.
    virtual bool turnUntil(const std::function<bool()>& condition) = 0;
};

class StatusBarContract : public testing::TestWithParam<BackendMaker<StatusBarBackend>> {
  protected:
    std::unique_ptr<StatusBarBackend> backend_ = GetParam().make();
    testing_support::SampleMenu sample_;
    std::unique_ptr<platform::StatusItem> item_ = backend_->makeItem(sample_.menu);
};

} // namespace contract
