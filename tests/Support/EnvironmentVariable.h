#pragma once

#include "Foundation/Interface.h"

#include <optional>
#include <string>

namespace testing_support {

/// Sets an environment variable of the test process, or unsets it if the value is null, and
/// restores it at the end.
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
