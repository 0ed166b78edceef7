#pragma once

#include "Foundation/Interface.h"

#include <filesystem>

namespace testing_support {

/// A new empty folder that goes, with all it holds, when the object does.
class TemporaryFolder : foundation::Pinned {
  public:
    TemporaryFolder();
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace testing_support
