#pragma once

#include "Platform/Permissions.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A trust that is there, as at first, or not, as the test says. Main thread only.
class MemoryAccessibilityTrust final : public AccessibilityTrust {
  public:
    [[nodiscard]] bool isProcessTrusted() const override { return isTrusted_; }

    bool isProcessTrustedWithPrompt() override {
        ++promptCount_;
        return isTrusted_;
    }

    void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }

    /// How often the question was asked with the system's prompt.
    [[nodiscard]] int promptCount() const { return promptCount_; }

  private:
    bool isTrusted_ = true;
    int promptCount_ = 0;
};

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

/// A desktop that opens nothing and remembers what it was asked to. Takes every text with a scheme
/// for a URL. Main thread only.
class MemoryWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override;

    /// Whether the desktop refuses to open anything from now on.
    void setRefuses(bool refuses) { refuses_ = refuses; }

    /// The URLs that were asked for so far, refused ones included.
    [[nodiscard]] const std::vector<std::string>& urls() const { return urls_; }

  private:
    std::vector<std::string> urls_;
    bool refuses_ = false;
};

} // namespace platform
