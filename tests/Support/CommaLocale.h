#pragma once

#include "tests/Support/TemporaryFolder.h"

#include <map>
#include <string>

namespace testing_support {

/// German as a language of the C library, which writes 0.5 as 0,5; made anew where the system does
/// not have it.
class CommaLocale {
  public:
    CommaLocale();

    /// What a program's environment needs in order to have it.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

  private:
    TemporaryFolder folder_;
};

} // namespace testing_support
