#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace platform {

/// The address of the session bus that answers on a local socket within `limit`; none when there is
/// no bus or it hangs. The places are $DBUS_SESSION_BUS_ADDRESS or else $XDG_RUNTIME_DIR/bus; no
/// bus is ever started. Whoever connects to a bus without asking here first waits half a minute for
/// one that hangs. Any thread.
[[nodiscard]] std::optional<std::string> findSessionBus(std::chrono::milliseconds limit);

} // namespace platform
