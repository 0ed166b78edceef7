#pragma once

class QWidget;

namespace platform {

/// Puts a visible window in front of all others and asks for the keyboard for it. Main thread only.
void bringToFront(QWidget& window);

/// Does so with all visible windows of the program; what was active among them, or else the dialog
/// that blocks the others, gets the keyboard.
void bringAllToFront();

} // namespace platform
