#pragma once

#include "Platform/Menu.h"

#include <QKeySequence>
#include <QStringList>

namespace platform {

/// The keys to hold, then the key, in the names that menus on the bus use: "Super" for command,
/// "Alt" for option, "Control", "Shift"; and the keysym's name of the key, such as "q" or "comma".
[[nodiscard]] QStringList busNames(const KeyEquivalent& keyEquivalent);

/// The same for the toolkit's own menus, where command is Meta.
[[nodiscard]] QKeySequence keySequence(const KeyEquivalent& keyEquivalent);

} // namespace platform
