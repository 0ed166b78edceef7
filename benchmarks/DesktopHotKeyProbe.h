#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace benchmarks {

/// Detects from outside whether a program has grabbed Super+G: grabs and releases it while holding
/// the server, so that no other program's request can fail because of the probe.
class DesktopHotKeyProbe : foundation::Pinned {
  public:
    explicit DesktopHotKeyProbe(const std::string& display);
    ~DesktopHotKeyProbe();

    [[nodiscard]] bool isTaken();

  private:
    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
};

} // namespace benchmarks
