#pragma once

#include "Foundation/Interface.h"
#include "Platform/UserDefaults.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// Settings and what it takes to find them again as a later start of the program does.
class UserDefaultsBackend : public foundation::Interface {
  public:
    virtual platform::UserDefaults& defaults() = 0;
    virtual void restart() = 0;
};

class UserDefaultsContract : public testing::TestWithParam<BackendMaker<UserDefaultsBackend>> {
  protected:
    platform::UserDefaults& defaults() { return backend_->defaults(); }

    /// The object is there at once and at a later start.
    void expectIsKept(const platform::UserDefaults::Object& object) {
        defaults().setObject("key", object);
        EXPECT_EQ(defaults().object("key"), object);
        backend_->restart();
        EXPECT_EQ(defaults().object("key"), object);
    }

    std::unique_ptr<UserDefaultsBackend> backend_ = GetParam().make();
};

} // namespace contract
