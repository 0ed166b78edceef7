#pragma once

#include <cstddef>

namespace platform {

/// Makes the process fit to run for weeks. Called first, before a descriptor is opened or a thread
/// is started.
///
/// Opens /dev/null for each standard descriptor that the process was started without: otherwise
/// the connection to the display would get the number, and log lines would be written into it.
/// Ignores SIGPIPE, so that logging into a closed pipe does not end the process. Keeps the heap
/// from growing with the number of threads and with large texts, and asks for huge pages for the
/// largest ones.
void prepareProcess();

/// Asks for huge pages for a block that has a mapping of its own. Without effect where the system
/// has none to offer.
void adviseHugePages(char* block, std::size_t size);

} // namespace platform
