#pragma once

#include "Platform/KeyDownMonitors.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <utility>

class QKeyEvent;

namespace platform {

/// Interprets the modifier bits of the windowing system's key events.
using NativeModifiers = std::function<hotkey::ModifierFlags(std::uint32_t state)>;

/// Filters the key events that reach the program's windows, before any widget or shortcut sees
/// them. The release of a swallowed press and its repetitions are swallowed too, even after the
/// monitor is removed. A changed event goes to the windows unchanged, and shortcuts of Qt's are off
/// while there is a monitor. Needs a QApplication from the first monitor on.
class QtKeyDownMonitors final : public QObject, public KeyDownMonitors {
  public:
    /// Without a function, the modifiers are those that Qt reports.
    explicit QtKeyDownMonitors(NativeModifiers nativeModifiers = {});

    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override;
    void removeMonitor(foundation::ObserverToken token) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    [[nodiscard]] KeyEvent keyEvent(const QKeyEvent& event) const;
    bool swallowsPress(const QKeyEvent& event);
    bool swallowsRelease(const QKeyEvent& event);

    NativeModifiers nativeModifiers_;
    foundation::ObserverList<std::optional<KeyEvent>&> handlers_;
    std::set<quint32> swallowedKeys_; ///< Native codes of those not yet released.
    /// The last swallowed release: native code and time in the server's milliseconds.
    std::optional<std::pair<quint32, quint64>> swallowedRelease_;
};

} // namespace platform
