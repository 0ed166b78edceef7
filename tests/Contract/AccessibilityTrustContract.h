#pragma once

#include "Foundation/Interface.h"
#include "Platform/Permissions.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// A system on which the user has allowed the program to control the computer.
class AccessibilityTrustBackend : public foundation::Interface {
  public:
    virtual platform::AccessibilityTrust& trust() = 0;
};

class AccessibilityTrustContract
    : public testing::TestWithParam<BackendMaker<AccessibilityTrustBackend>> {
  protected:
    std::unique_ptr<AccessibilityTrustBackend> backend_ = GetParam().make();
};

} // namespace contract
