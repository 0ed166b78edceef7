#pragma once

#include <unistd.h>

#include <chrono>
#include <cstddef>

namespace platform {

/// How long and how much the X11 clipboard bears with other programs.
struct X11PasteboardLimits {
    /// A sixteenth of the machine's memory: hundreds of megabytes, and room for the few times as
    /// much that is made of an ordinary text. Lines of one letter become about 65 times as long,
    /// so that even a text within this limit may become more than fits.
    [[nodiscard]] static std::size_t sixteenthOfMemory() {
        return static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
               static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 16;
    }

    /// How long an owner that we read from, or a clipboard manager that we hand over to, may keep
    /// still. A transfer may take longer, as long as it goes on.
    std::chrono::milliseconds silence{1000};

    /// How long a program that receives a large text from us may keep still before it is given up;
    /// it is noticed after twice that time at the latest.
    std::chrono::milliseconds sending{10'000};

    /// The most bytes that go to another program at once; longer texts go in pieces. What the
    /// server takes in one request is a limit as well.
    std::size_t chunkSize = std::size_t{256} * 1024;

    /// The most bytes that are read.
    std::size_t maximumTextSize = sixteenthOfMemory();
};

} // namespace platform
