#pragma once

#include "Platform/Linux/KeyboardModifiers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// Asks the X server each time, over a connection that exists only as long as the question: the
/// keyboard may have changed, and nothing is kept while nobody asks. Waits for the server.
class X11KeyboardModifiers final : public KeyboardModifiers {
  public:
    /// `display` as in X11Connection::open.
    explicit X11KeyboardModifiers(std::string display = {}) : display_(std::move(display)) {}

    [[nodiscard]] std::optional<hotkey::ModifierFlags>
    modifierFlags(std::uint32_t state) const override;

  private:
    std::string display_;
};

} // namespace platform
