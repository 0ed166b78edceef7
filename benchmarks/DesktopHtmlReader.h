#pragma once

#include "tests/Desktop/XcbClient.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace benchmarks {

/// Another program on the desktop, which asks every new owner of the clipboard for its HTML at
/// once.
class DesktopHtmlReader {
  public:
    struct Received {
        /// When the news of the owner whose HTML it is arrived, and when the HTML was complete, in
        /// the seconds of now().
        double ownerAt = 0;
        double completeAt = 0;
        std::string html = {};
    };

    explicit DesktopHtmlReader(const std::string& display);

    /// From here on only owners count that are still to come.
    void forgetOwners();

    /// The HTML of the first new owner that gives some; none when there is none within `limit`.
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
