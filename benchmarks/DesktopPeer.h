#pragma once

#include <string>

namespace benchmarks {

/// Has CopyQ, the clipboard manager that the figures of the desktop are held against, do the same
/// conversion on Super+G: a command with a global shortcut and a script in CopyQ's own language.
void writePeerConfiguration(const std::string& configurationFolder);

} // namespace benchmarks
