#pragma once

#include "Platform/Memory/Journal.h"
#include "Platform/Permissions.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Trusts the program until a test says otherwise. Main thread only.
class MemoryAccessibilityTrust final : public AccessibilityTrust, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] bool isProcessTrusted() const override {
        note("check trust");
        return isTrusted_;
    }

    bool isProcessTrustedWithPrompt() override {
        note("prompt for trust");
        ++promptCount_;
        return isTrusted_;
    }

    void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }

    /// How many times the system's prompt was shown.
    [[nodiscard]] int promptCount() const { return promptCount_; }

  private:
    bool isTrusted_ = true;
    int promptCount_ = 0;
};

/// Alerts with a preset answer. Main thread only.
class MemoryAlerts final : public Alerts, public Journaled {
  public:
    using Journaled::Journaled;

    std::optional<std::size_t> runModal(const Alert& alert) override {
        note("alert", alert.messageText);
        shown_.push_back(alert);
        if (whileShown_) {
            whileShown_();
        }
        return answer_;
    }

    /// The button that the user chooses from now on; none, as at first, if the alert is closed
    /// without one.
    void setAnswer(std::optional<std::size_t> buttonIndex) { answer_ = buttonIndex; }

    /// Called while an alert is shown.
    void setWhileShown(std::function<void()> whileShown) { whileShown_ = std::move(whileShown); }

    /// All alerts so far, oldest first.
    [[nodiscard]] const std::vector<Alert>& shown() const { return shown_; }

  private:
    std::vector<Alert> shown_;
    std::optional<std::size_t> answer_;
    std::function<void()> whileShown_;
};

/// A desktop that records the URLs it is asked to open. Every text with a scheme is a URL. Main
/// thread only.
class MemoryWorkspace final : public Workspace, public Journaled {
  public:
    using Journaled::Journaled;

    bool openURL(const std::string& url) override {
        note("open", url);
        if (!hasScheme(url)) {
            return false;
        }
        urls_.push_back(url);
        return !refuses_;
    }

    /// Whether openURL() fails from now on.
    void setRefuses(bool refuses) { refuses_ = refuses; }

    /// The URLs so far, including refused ones.
    [[nodiscard]] const std::vector<std::string>& urls() const { return urls_; }

  private:
    static bool hasScheme(std::string_view text) {
        const auto isLetter = [](char character) {
            return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
        };
        const auto isInScheme = [isLetter](char character) {
            return isLetter(character) || (character >= '0' && character <= '9') ||
                   character == '+' || character == '-' || character == '.';
        };
        const std::string_view scheme = text.substr(0, text.find(':'));
        return scheme.size() < text.size() && !scheme.empty() && isLetter(scheme.front()) &&
               std::all_of(scheme.begin(), scheme.end(), isInScheme);
    }

    std::vector<std::string> urls_;
    bool refuses_ = false;
};

} // namespace platform
