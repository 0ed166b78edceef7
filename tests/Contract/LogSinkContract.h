#pragma once

#include "Foundation/Interface.h"
#include "Foundation/LogSink.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace contract {

/// A log and its reader.
class LogSinkBackend : public foundation::Interface {
  public:
    virtual foundation::LogSink& sink() = 0;
    virtual void setDebugEnabled(bool isEnabled) = 0;
    /// The lines so far, as "subsystem.category level: message".
    virtual std::vector<std::string> lines() = 0;
};

class LogSinkContract : public testing::TestWithParam<BackendMaker<LogSinkBackend>> {
  protected:
    std::unique_ptr<LogSinkBackend> backend_ = GetParam().make();
    foundation::LogSink& sink_ = backend_->sink();
};

} // namespace contract
