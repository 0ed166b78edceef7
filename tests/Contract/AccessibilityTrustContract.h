#pragma once

#include "Foundation/Interface.h"
#include "Platform/Permissions.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// The trust that a system has in a program which its user has let control the computer.
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
