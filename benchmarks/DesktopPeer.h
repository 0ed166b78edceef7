#pragma once

#include <string>

namespace benchmarks {

/// Configures CopyQ, the clipboard manager we compare with, to do the same conversion on Super+G: a
/// command with a global shortcut and a script in CopyQ's own language.
void writePeerConfiguration(const std::string& configurationFolder);

} // namespace benchmarks
