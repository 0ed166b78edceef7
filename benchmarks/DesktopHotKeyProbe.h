#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace benchmarks {

/// Finds out from outside whether some program has taken Super+G: asks for it and gives it back at
/// once, with the server held meanwhile, so that no other program's own request can fail for it.
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
