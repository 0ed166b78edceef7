#pragma once

#include "tests/Support/TemporaryFolder.h"

#include <map>
#include <string>

namespace testing_support {

/// A German locale, which writes 0.5 as 0,5; generated if the system does not have one.
class CommaLocale {
  public:
    CommaLocale();

    /// The environment variables that select it.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

  private:
    TemporaryFolder folder_;
};

} // namespace testing_support
