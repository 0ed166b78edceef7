#pragma once

#include <unistd.h>

#include <chrono>
#include <cstddef>

namespace platform {

/// Time and size limits for transfers with other clients.
struct TransferLimits {
    /// A sixteenth of physical memory: hundreds of megabytes, and leaves memory for the conversion.
    /// Lines of one letter grow about 65-fold, so even a text within this limit may become too
    /// large to convert.
    [[nodiscard]] static std::size_t sixteenthOfMemory() {
        return static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
               static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 16;
    }

    /// Time without progress after which an owner that we read from, or a clipboard manager that
    /// takes over our texts, is given up. There is no limit on a transfer that makes progress.
    std::chrono::milliseconds silence{1000};

    /// Time without progress after which a receiver of a large text is given up. Checked
    /// periodically, so it may take up to twice as long.
    std::chrono::milliseconds sending{10'000};

    /// Maximum bytes sent to another client at once.
    std::size_t chunkSize = std::size_t{256} * 1024;

    /// Maximum bytes read.
    std::size_t maximumTextSize = sixteenthOfMemory();
};

} // namespace platform
