#pragma once

#include "Platform/Memory/MemoryApplication.h"
#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "Platform/Memory/MemoryImages.h"
#include "Platform/Memory/MemoryKeyDownMonitors.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryPasteboard.h"
#include "Platform/Memory/MemoryPermissions.h"
#include "Platform/Memory/MemoryStatusBar.h"
#include "Platform/Memory/MemoryTime.h"
#include "Platform/Memory/MemoryUserDefaults.h"
#include "Platform/Memory/MemoryViews.h"
#include "Platform/Platform.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// A whole system in memory, for running the program in tests. Main thread only.
class MemoryPlatform final : public Platform {
  public:
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        return bundleIdentifier_;
    }

    [[nodiscard]] MemoryLogSink& logSink() override { return logSink_; }

    [[nodiscard]] MemoryMainQueue& mainQueue() override { return mainQueue_; }

    [[nodiscard]] MemoryPasteboard& pasteboard() override { return pasteboard_; }

    [[nodiscard]] MemoryEventHotKeyService& eventHotKeyService() override {
        return eventHotKeyService_;
    }

    [[nodiscard]] MemoryClock& clock() override { return clock_; }

    [[nodiscard]] MemoryCalendar& calendar() override { return calendar_; }

    [[nodiscard]] MemoryUserDefaults& userDefaults() override { return userDefaults_; }

    [[nodiscard]] MemoryStandardOutput& standardOutput() override { return standardOutput_; }

    [[nodiscard]] MemoryAccessibilityTrust& accessibilityTrust() override {
        return accessibilityTrust_;
    }

    [[nodiscard]] MemoryAlerts& alerts() override { return alerts_; }

    [[nodiscard]] MemoryWorkspace& workspace() override { return workspace_; }

    [[nodiscard]] MemoryApplication& application() override { return application_; }

    [[nodiscard]] MemoryImages& images() override { return images_; }

    [[nodiscard]] MemoryStatusBar& statusBar() override { return statusBar_; }

    [[nodiscard]] MemoryToolkit& toolkit() override { return toolkit_; }

    [[nodiscard]] MemoryKeyDownMonitors& keyDownMonitors() override { return keyDownMonitors_; }

    /// Launches the program, does what setUser() says and returns.
    int run(const std::function<void()>& didFinishLaunching) override {
        didFinishLaunching();
        if (user_) {
            user_();
        }
        return 0;
    }

    /// What the user does while the program runs.
    void setUser(std::function<void()> user) { user_ = std::move(user); }

    void setBundleIdentifier(std::string identifier) { bundleIdentifier_ = std::move(identifier); }

  private:
    MemoryLogSink logSink_;
    MemoryMainQueue mainQueue_;
    MemoryPasteboard pasteboard_;
    MemoryEventHotKeyService eventHotKeyService_;
    MemoryClock clock_{mainQueue_};
    MemoryCalendar calendar_;
    MemoryUserDefaults userDefaults_;
    MemoryStandardOutput standardOutput_;
    MemoryAccessibilityTrust accessibilityTrust_;
    MemoryAlerts alerts_;
    MemoryWorkspace workspace_;
    MemoryApplication application_;
    MemoryImages images_;
    MemoryStatusBar statusBar_;
    MemoryToolkit toolkit_;
    MemoryKeyDownMonitors keyDownMonitors_;
    std::optional<std::string> bundleIdentifier_;
    std::function<void()> user_;
};

} // namespace platform
