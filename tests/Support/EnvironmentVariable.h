#pragma once

#include "Foundation/Interface.h"

#include <optional>
#include <string>

namespace testing_support {

/// Sets a variable of the test's environment, or unsets it where the value is null, and puts back
/// what was there before in the end.
class EnvironmentVariable : foundation::Pinned {
  public:
    EnvironmentVariable(std::string name, const char* value);
    ~EnvironmentVariable();

  private:
    void set(const char* value) const;

    std::string name_;
    std::optional<std::string> previous_;
};

} // namespace testing_support
