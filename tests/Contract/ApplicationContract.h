#pragma once

#include "Foundation/Interface.h"
#include "Platform/Application.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace contract {

using Request = std::function<void()> platform::Application::Requests::*;

/// The running program, and the desktop that it runs on.
class ApplicationBackend : public foundation::Interface {
  public:
    virtual platform::Application& application() = 0;
    /// The desktop asks for something, and the program has been told when this returns.
    virtual void ask(Request request) = 0;
    /// Lets the program do what it put off.
    virtual void settle() = 0;
    /// Puts another program in front of this one, which has been in front.
    virtual void leaveTheFront() = 0;
    [[nodiscard]] virtual bool comesToTheFront() = 0;
    /// Runs the program, and the action in it; whether the program ends then.
    virtual bool endsAfter(const std::function<void()>& action) = 0;
};

class ApplicationContract : public testing::TestWithParam<BackendMaker<ApplicationBackend>> {
  protected:
    /// Requests that are noted when they come.
    platform::Application::Requests noting() {
        return {.convert = [this] { notes_.emplace_back("convert"); },
                .openPreferences = [this] { notes_.emplace_back("preferences"); }};
    }

    static constexpr Request convert = &platform::Application::Requests::convert;
    static constexpr Request openPreferences = &platform::Application::Requests::openPreferences;

    std::unique_ptr<ApplicationBackend> backend_ = GetParam().make();
    platform::Application& application_ = backend_->application();
    std::vector<std::string> notes_;
};

} // namespace contract
