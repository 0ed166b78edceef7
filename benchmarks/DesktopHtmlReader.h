#pragma once

#include "tests/Desktop/XcbClient.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace benchmarks {

/// An X11 client that requests the HTML of each new clipboard owner at once.
class DesktopHtmlReader {
  public:
    struct Received {
        /// When the owner change was reported and when its HTML was complete, in seconds as from
        /// now().
        double ownerAt = 0;
        double completeAt = 0;
        std::string html = {};
    };

    explicit DesktopHtmlReader(const std::string& display);

    /// Ignores owner changes up to now.
    void forgetOwners();

    /// The HTML of the first new owner that has any; nullopt if none arrives within `limit`.
    [[nodiscard]] std::optional<Received> awaitHtml(std::chrono::milliseconds limit);

  private:
    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::string bytes;
    };

    void ask(xcb_timestamp_t time);
    [[nodiscard]] Property take();

    testing_support::XcbClient client_;
    xcb_atom_t clipboard_;
    xcb_atom_t htmlType_;
    xcb_atom_t incremental_;
    xcb_atom_t place_;
    std::uint8_t ownerEvent_ = 0;
};

} // namespace benchmarks
