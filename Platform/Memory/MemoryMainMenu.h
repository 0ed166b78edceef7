#pragma once

#include "HotKey/MainMenu.h"

#include <optional>
#include <utility>
#include <vector>

namespace platform {

/// A main menu as a test sets it. Main thread only.
class MemoryMainMenu final : public hotkey::MainMenu {
  public:
    explicit MemoryMainMenu(std::vector<std::optional<Item>> items) : items_(std::move(items)) {}

    [[nodiscard]] std::vector<std::optional<Item>> items() override { return items_; }

  private:
    std::vector<std::optional<Item>> items_;
};

} // namespace platform
