#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <string>
#include <variant>

namespace platform {

/// The platform, or the one line that tells the user why there is none.
using PlatformOrReason = std::variant<std::unique_ptr<Platform>, std::string>;

/// Makes the platform of the system that the program was built for. Called once, first thing in
/// the program; `argc` and `argv` are main's and outlive the platform.
[[nodiscard]] PlatformOrReason makePlatform(int& argc, char** argv);

} // namespace platform
