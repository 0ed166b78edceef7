#include "Platform/Linux/SessionChoice.h"

namespace platform {

std::variant<Choice, NoPlatform> choose(const Session& session) {
    if (session.x11Display.empty()) {
        return NoPlatform{"there is no X display: DISPLAY is not set"};
    }
    if (!session.hasX11Server) {
        return NoPlatform{"the X display " + session.x11Display + " does not answer"};
    }
    Choice choice{.qtPlugin = session.qtPlugin.empty() ? "xcb" : session.qtPlugin,
                  .limitation = {}};
    if (session.isWayland) {
        // The compositor passes keys to XWayland only for its own windows.
        choice.limitation =
            "In a Wayland session the shortcut works only while an X11 window is in front";
    }
    return choice;
}

} // namespace platform
