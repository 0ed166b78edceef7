#pragma once

#include "Platform/Memory/Journal.h"
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
#include <memory>
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

    /// The calls of all services in one order.
    [[nodiscard]] Journal& journal() { return *journal_; }

    /// What the user does while the program runs.
    void setUser(std::function<void()> user) { user_ = std::move(user); }

    void setBundleIdentifier(std::string identifier) { bundleIdentifier_ = std::move(identifier); }

  private:
    std::shared_ptr<Journal> journal_ = std::make_shared<Journal>();
    MemoryLogSink logSink_{journal_};
    MemoryMainQueue mainQueue_{journal_};
    MemoryPasteboard pasteboard_{journal_};
    MemoryEventHotKeyService eventHotKeyService_{journal_};
    MemoryClock clock_{mainQueue_};
    MemoryCalendar calendar_;
    MemoryUserDefaults userDefaults_{journal_};
    MemoryStandardOutput standardOutput_{journal_};
    MemoryAccessibilityTrust accessibilityTrust_{journal_};
    MemoryAlerts alerts_{journal_};
    MemoryWorkspace workspace_{journal_};
    MemoryApplication application_{journal_};
    MemoryImages images_{journal_};
    MemoryStatusBar statusBar_{journal_};
    MemoryToolkit toolkit_{journal_};
    MemoryKeyDownMonitors keyDownMonitors_{journal_};
    std::optional<std::string> bundleIdentifier_;
    std::function<void()> user_;
};

} // namespace platform
