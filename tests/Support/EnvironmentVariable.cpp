#include "tests/Support/EnvironmentVariable.h"

#include <cstdlib>
#include <utility>

namespace testing_support {

EnvironmentVariable::EnvironmentVariable(std::string name, const char* value)
    : name_(std::move(name)) {
    if (const char* previous = std::getenv(name_.c_str())) {
        previous_ = previous;
    }
    set(value);
}

EnvironmentVariable::~EnvironmentVariable() {
    set(previous_ ? previous_->c_str() : nullptr);
}

void EnvironmentVariable::set(const char* value) const {
    if (value != nullptr) {
        setenv(name_.c_str(), value, 1);
    } else {
        unsetenv(name_.c_str());
    }
}

} // namespace testing_support
