#pragma once

#include "Platform/Platform.h"

#include <string>
#include <variant>

namespace platform {

/// What the program finds of the user's session when it starts.
struct Session {
    std::string x11Display;    ///< DISPLAY; empty if unset.
    bool hasX11Server = false; ///< Whether that display accepted a connection.
    bool isWayland = false;    ///< Whether the session runs on a Wayland compositor.
    std::string qtPlugin;      ///< QT_QPA_PLATFORM, which the user may set; empty if unset.
};

/// What the program makes for a session.
struct Choice {
    std::string qtPlugin;
    /// What the program cannot do on this desktop, in a sentence for the user; empty if nothing.
    std::string limitation;
};

/// NoPlatform if the program cannot do anything useful in this session.
[[nodiscard]] std::variant<Choice, NoPlatform> choose(const Session& session);

} // namespace platform
