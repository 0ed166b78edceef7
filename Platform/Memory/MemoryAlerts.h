#pragma once

#include "Platform/Alerts.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

/// Alerts that answer themselves, as told before. Main thread only.
class MemoryAlerts final : public Alerts {
  public:
    std::optional<std::size_t> runModal(const Alert& alert) override {
        shown_.push_back(alert);
        if (whileShown_) {
            whileShown_();
        }
        return answer_;
    }

    /// The index of the button that the user chooses from now on; none, as at first, when the alert
    /// goes away by itself.
    void setAnswer(std::optional<std::size_t> buttonIndex) { answer_ = buttonIndex; }

    /// What happens while an alert is up.
    void setWhileShown(std::function<void()> happening) { whileShown_ = std::move(happening); }

    /// All alerts so far, oldest first.
    [[nodiscard]] const std::vector<Alert>& shown() const { return shown_; }

  private:
    std::vector<Alert> shown_;
    std::optional<std::size_t> answer_;
    std::function<void()> whileShown_;
};

} // namespace platform
