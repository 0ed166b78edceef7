#pragma once

#include "Platform/Images.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

class ImagesContract : public testing::TestWithParam<BackendMaker<platform::Images>> {
  protected:
    std::unique_ptr<platform::Images> images_ = GetParam().make();
};

} // namespace contract
