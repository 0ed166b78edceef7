#pragma once

#include "Platform/Platform.h"

#include <utility>

namespace platform {

/// A platform whose services are members of `Services`, which it owns.
template <typename Services>
class PlatformOf : public Platform {
  public:
    [[nodiscard]] foundation::LogSink& logSink() override { return services_.logSink; }

    [[nodiscard]] MainQueue& mainQueue() override { return services_.mainQueue; }

    [[nodiscard]] Pasteboard& pasteboard() override { return services_.pasteboard; }

    [[nodiscard]] hotkey::EventHotKeyService& eventHotKeyService() override {
        return services_.eventHotKeyService;
    }

    [[nodiscard]] Clock& clock() override { return services_.clock; }

    [[nodiscard]] Calendar& calendar() override { return services_.calendar; }

    [[nodiscard]] UserDefaults& userDefaults() override { return services_.userDefaults; }

    [[nodiscard]] StandardOutput& standardOutput() override { return services_.standardOutput; }

    [[nodiscard]] AccessibilityTrust& accessibilityTrust() override {
        return services_.accessibilityTrust;
    }

    [[nodiscard]] Alerts& alerts() override { return services_.alerts; }

    [[nodiscard]] Workspace& workspace() override { return services_.workspace; }

    [[nodiscard]] Application& application() override { return services_.application; }

    [[nodiscard]] Images& images() override { return services_.images; }

    [[nodiscard]] StatusBar& statusBar() override { return services_.statusBar; }

    [[nodiscard]] Toolkit& toolkit() override { return services_.toolkit; }

    [[nodiscard]] KeyDownMonitors& keyDownMonitors() override { return services_.keyDownMonitors; }

  protected:
    template <typename... Arguments>
    explicit PlatformOf(Arguments&&... arguments)
        : services_(std::forward<Arguments>(arguments)...) {}

    [[nodiscard]] Services& services() { return services_; }

  private:
    Services services_;
};

} // namespace platform
