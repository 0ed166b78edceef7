#pragma once

#include "Foundation/Interface.h"
#include "Platform/Views.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace contract {

/// A toolkit and its user.
class ToolkitBackend : public foundation::Interface {
  public:
    virtual platform::Toolkit& toolkit() = 0;
    virtual void press(platform::Button& button) = 0;
    /// Runs the system's deferred work.
    virtual void settle() = 0;
};

/// Fills a window with one view and notes the calls it gets.
class NotingController final : public platform::ViewController {
  public:
    explicit NotingController(platform::Toolkit& toolkit) : toolkit_(toolkit) {}

    void loadView() override {
        notes.emplace_back("load");
        setView(toolkit_.makeView({{0, 0}, {40, 20}}));
    }

    void viewDidLoad() override { notes.emplace_back("did load"); }

    void viewWillAppear() override { notes.emplace_back("will appear"); }

    void viewDidLayout() override {
        if (notes.empty() || notes.back() != "did layout") {
            notes.emplace_back("did layout");
        }
    }

    void viewDidDisappear() override { notes.emplace_back("did disappear"); }

    /// Consecutive layouts count once.
    std::vector<std::string> notes;

  private:
    platform::Toolkit& toolkit_;
};

class ToolkitContract : public testing::TestWithParam<BackendMaker<ToolkitBackend>> {
  protected:
    std::unique_ptr<ToolkitBackend> backend_ = GetParam().make();
    platform::Toolkit& toolkit_ = backend_->toolkit();
};

class WindowContract : public ToolkitContract {
  protected:
    NotingController controller_{toolkit_};
    std::unique_ptr<platform::Window> window_ =
        toolkit_.makeWindow({{0, 0}, {400, 350}}, {.isTitled = true, .isClosable = true}, {});
};

using ToolkitContractDeathTests = ToolkitContract;

} // namespace contract
