#pragma once

#include "Foundation/Interface.h"

#include <filesystem>

namespace testing_support {

/// A new, empty folder, deleted with its contents at the end.
class TemporaryFolder : foundation::Pinned {
  public:
    TemporaryFolder();
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace testing_support
