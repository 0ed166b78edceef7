#include "Platform/Linux/X11/X11KeyboardModifiers.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11Modifiers.h"

namespace platform {

std::optional<hotkey::ModifierFlags>
X11KeyboardModifiers::modifierFlags(std::uint32_t state) const {
    const auto connection = X11Connection::open(display_);
    const auto modifiers = connection ? X11Modifiers::query(*connection) : std::nullopt;
    if (!modifiers) {
        return std::nullopt;
    }
    return modifiers->modifierFlags(static_cast<std::uint16_t>(state));
}

} // namespace platform
