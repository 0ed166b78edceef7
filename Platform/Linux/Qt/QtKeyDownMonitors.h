#pragma once

#include "Platform/KeyDownMonitors.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

class QKeyEvent;

namespace platform {

/// Interprets the modifier bits of the windowing system's key events.
using NativeModifiers = std::function<hotkey::ModifierFlags(std::uint32_t state)>;

/// Filters the key events that reach the program's windows, before any widget or shortcut sees
/// them. Those of an open menu are the menu's alone. The release of a swallowed press and its
/// repetitions are swallowed too, even after the monitor is removed. Repetitions of a key that was
/// held when the last monitor was added are swallowed, and no monitor sees them. A changed event
/// goes to the windows unchanged, and shortcuts of Qt's are off while there is a monitor. Needs a
/// QApplication.
class QtKeyDownMonitors final : public QObject, public KeyDownMonitors {
  public:
    /// Without a function, the modifiers are those that Qt reports.
    explicit QtKeyDownMonitors(NativeModifiers nativeModifiers = {});

    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override;
    void removeMonitor(foundation::ObserverToken token) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    /// What happened to the last press of a key.
    struct Key {
        bool isMonitored = false; ///< Monitors saw it, and none was added since.
        bool isSwallowed = false;
    };

    [[nodiscard]] bool isMonitoring() const;
    [[nodiscard]] KeyEvent keyEvent(const QKeyEvent& event) const;
    bool swallowsPress(const QKeyEvent& event);
    bool passesMonitors(const QKeyEvent& event);
    bool swallowsRelease(const QKeyEvent& event);

    NativeModifiers nativeModifiers_;
    foundation::ObserverList<std::optional<KeyEvent>&> handlers_;
    std::map<quint32, Key> keys_; ///< By native code.
    /// Native code and time in the server's milliseconds.
    std::optional<std::pair<quint32, quint64>> lastRelease_;
};

} // namespace platform
