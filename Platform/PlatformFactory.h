#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <string>
#include <variant>

namespace platform {

/// The program is already running and has been notified of this start: there is nothing to do.
struct AlreadyRunning {};

/// Why there is no platform, in one line for the user.
struct NoPlatform {
    std::string reason;
};

using PlatformOrNot = std::variant<std::unique_ptr<Platform>, AlreadyRunning, NoPlatform>;

/// Makes the platform of the system that the program was built for. Called once, before anything
/// else; `argc` and `argv` are main's and outlive the platform.
[[nodiscard]] PlatformOrNot makePlatform(int& argc, char** argv);

} // namespace platform
