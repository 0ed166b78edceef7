#pragma once

#include "Foundation/Interface.h"
#include "Platform/Application.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace contract {

/// Standard output and what a reader has received so far.
class StandardOutputBackend : public foundation::Interface {
  public:
    virtual platform::StandardOutput& output() = 0;
    virtual std::vector<std::string> lines() = 0;
};

class StandardOutputContract : public testing::TestWithParam<BackendMaker<StandardOutputBackend>> {
  protected:
    std::unique_ptr<StandardOutputBackend> backend_ = GetParam().make();
};

} // namespace contract
