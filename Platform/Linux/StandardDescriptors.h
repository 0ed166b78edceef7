#pragma once

namespace platform {

/// Opens /dev/null in the place of each of the three standard descriptors that the process was
/// started without. Otherwise the next thing that is opened, the connection to the display for
/// example, gets the number, and log lines are written into it. Called before anything is opened.
void fillStandardDescriptors();

} // namespace platform
