#pragma once

#include "Foundation/Interface.h"
#include "Platform/Time.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// A clock and a way to let time pass.
class ClockBackend : public foundation::Interface {
  public:
    virtual const platform::Clock& clock() = 0;
    virtual void pass() = 0;
};

class ClockContract : public testing::TestWithParam<BackendMaker<ClockBackend>> {
  protected:
    std::unique_ptr<ClockBackend> backend_ = GetParam().make();
};

} // namespace contract
