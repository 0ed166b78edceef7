#pragma once

#include "Foundation/Interface.h"
#include "Platform/UserDefaults.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// User defaults that can be reopened as in a later run of the program.
class UserDefaultsBackend : public foundation::Interface {
  public:
    virtual platform::UserDefaults& defaults() = 0;
    virtual void restart() = 0;
};

class UserDefaultsContract : public testing::TestWithParam<BackendMaker<UserDefaultsBackend>> {
  protected:
    platform::UserDefaults& defaults() { return backend_->defaults(); }

    /// Expects to read the value at once and in a later run.
    void expectIsKept(const foundation::Value& value) {
        defaults().setObject("key", value);
        EXPECT_EQ(defaults().object("key"), value);
        backend_->restart();
        EXPECT_EQ(defaults().object("key"), value);
    }

    std::unique_ptr<UserDefaultsBackend> backend_ = GetParam().make();
};

} // namespace contract
