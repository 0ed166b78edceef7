#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <string>
#include <variant>

namespace platform {

/// The program runs already, and that one has been told of this start: there is nothing to do.
struct AlreadyRunning {};

/// The one line that tells the user why there is no platform.
struct NoPlatform {
    std::string reason;
};

using PlatformOrNot = std::variant<std::unique_ptr<Platform>, AlreadyRunning, NoPlatform>;

/// Makes the platform of the system that the program was built for. Called once, first thing in
/// the program; `argc` and `argv` are main's and outlive the platform.
[[nodiscard]] PlatformOrNot makePlatform(int& argc, char** argv);

} // namespace platform
