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

/// The running program and its desktop.
class ApplicationBackend : public foundation::Interface {
  public:
    virtual platform::Application& application() = 0;
    /// Sends a request from the desktop and returns when the program has received it.
    virtual void ask(Request request) = 0;
    /// Runs deferred work.
    virtual void settle() = 0;
    /// Brings another program to the front.
    virtual void leaveTheFront() = 0;
    [[nodiscard]] virtual bool comesToTheFront() = 0;
    /// Runs the action in the program. Returns whether the program then ends.
    virtual bool endsAfter(const std::function<void()>& action) = 0;
};

class ApplicationContract : public testing::TestWithParam<BackendMaker<ApplicationBackend>> {
  protected:
    /// Handlers that note each request.
    platform::Application::Requests noting() {
        return {.convert = [this] { notes_.emplace_back("convert"); },
                .openPreferences = [this] { notes_.emplace_back("preferences"); },
                .retryShortcut = [this] { notes_.emplace_back("retry"); }};
    }

    static constexpr Request convert = &platform::Application::Requests::convert;
    static constexpr Request openPreferences = &platform::Application::Requests::openPreferences;

    std::unique_ptr<ApplicationBackend> backend_ = GetParam().make();
    platform::Application& application_ = backend_->application();
    std::vector<std::string> notes_;
};

} // namespace contract
