#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "Platform/Memory/MemoryKeyDownMonitors.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/QtDesktop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>
#include <memory>
#include <optional>
#include <string>

namespace {

using foundation::ObserverToken;
using platform::KeyEvent;

constexpr std::uint32_t carbonG = 5;

/// Key-down monitors, and a window of the program with the keyboard.
class Backend {
  public:
    Backend() = default;
    virtual ~Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    Backend(Backend&&) = delete;
    Backend& operator=(Backend&&) = delete;

    virtual platform::KeyDownMonitors& monitors() = 0;
    /// Presses G; whether the window got it.
    virtual bool reachesTheWindow() = 0;
};

class MemoryBackend final : public Backend {
  public:
    platform::KeyDownMonitors& monitors() override { return monitors_; }

    bool reachesTheWindow() override {
        return monitors_.deliver({.keyCode = carbonG, .modifierFlags = {}}).has_value();
    }

  private:
    platform::MemoryKeyDownMonitors monitors_;
};

class QtBackend final : public Backend {
  public:
    QtBackend() {
        line_.show();
        line_.activateWindow();
        EXPECT_TRUE(desktop_.waitForFocus(line_));
    }

    platform::KeyDownMonitors& monitors() override { return monitors_; }

    bool reachesTheWindow() override {
        line_.clear();
        constexpr quint32 nativeG = KEY_G + 8;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_G, Qt::NoModifier, nativeG, 'g', 0, "g");
            event.setTimestamp(++time_);
            QCoreApplication::sendEvent(line_.windowHandle(), &event);
        }
        return line_.text() == "g";
    }

  private:
    testing_support::QtDesktop desktop_;
    platform::QtKeyDownMonitors monitors_{nullptr};
    QLineEdit line_;
    quint64 time_ = 0;
};

using BackendMaker = contract::BackendMaker<Backend>;

class KeyDownMonitorsContract : public testing::TestWithParam<BackendMaker> {
  protected:
    /// A monitor that notes `mark` and the key, and lets it through or not.
    ObserverToken add(char mark, bool letsThrough) {
        return monitors_.addLocalMonitor([this, mark, letsThrough](const KeyEvent& event) {
            EXPECT_EQ(event.keyCode, carbonG);
            notes_ += mark;
            return letsThrough ? std::optional(event) : std::nullopt;
        });
    }

    std::unique_ptr<Backend> backend_ = GetParam().make();
    platform::KeyDownMonitors& monitors_ = backend_->monitors();
    std::string notes_;
};

TEST_P(KeyDownMonitorsContract, KeysReachTheWindowWithoutAMonitor) {
    EXPECT_TRUE(backend_->reachesTheWindow());
}

TEST_P(KeyDownMonitorsContract, AMonitorSwallowsAKeyOrLetsItThrough) {
    const ObserverToken token = add('a', false);
    EXPECT_FALSE(backend_->reachesTheWindow());
    monitors_.removeMonitor(token);
    static_cast<void>(add('b', true));
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "ab");
}

TEST_P(KeyDownMonitorsContract, MonitorsAreAskedInTheirOrderUntilOneSwallows) {
    static_cast<void>(add('a', true));
    static_cast<void>(add('b', false));
    static_cast<void>(add('c', true));
    EXPECT_FALSE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "ab");
}

TEST_P(KeyDownMonitorsContract, ARemovedMonitorSeesNothing) {
    const ObserverToken token = add('a', false);
    monitors_.removeMonitor(token);
    monitors_.removeMonitor(token);
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "");
}

TEST_P(KeyDownMonitorsContract, AMonitorMayRemoveItselfAndStillSwallowsTheKey) {
    ObserverToken token{};
    token = monitors_.addLocalMonitor([&](const KeyEvent& /*event*/) -> std::optional<KeyEvent> {
        monitors_.removeMonitor(token);
        notes_ += 'a';
        return std::nullopt;
    });
    EXPECT_FALSE(backend_->reachesTheWindow());
    EXPECT_TRUE(backend_->reachesTheWindow());
    EXPECT_EQ(notes_, "a");
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         KeyDownMonitorsContract,
                         testing::Values(BackendMaker{"Memory",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<MemoryBackend>();
                                                      }},
                                         BackendMaker{"Qt",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<QtBackend>();
                                                      }}),
                         [](const auto& maker) { return std::string(maker.param.name); });

} // namespace
