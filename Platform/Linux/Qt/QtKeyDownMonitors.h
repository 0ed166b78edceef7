#pragma once

#include "Platform/KeyDownMonitors.h"
#include "Platform/Linux/Qt/QtKeyEvents.h"

#include <QtGlobal>
#include <map>
#include <memory>
#include <optional>
#include <set>

class QEvent;
class QKeyEvent;
class QObject;

namespace platform {

/// Sees the keys that the windowing system sends to the program's windows, before any widget,
/// shortcut or input method does: input methods and dead keys rest while a monitor is there. The
/// windows do not hear of the repetitions and the release of a swallowed press either, even after
/// the monitor is gone. An event that a handler changed goes to the windows unchanged. Nothing is
/// installed while there is no monitor. Needs a QApplication from the first monitor on.
class QtKeyDownMonitors final : public KeyDownMonitors {
  public:
    /// Qt's own reading of the modifiers is taken when `nativeModifiers` is empty.
    explicit QtKeyDownMonitors(NativeModifiers nativeModifiers = {});
    ~QtKeyDownMonitors() override;

    [[nodiscard]] foundation::ObserverToken addLocalMonitor(Handler handler) override;
    void removeMonitor(foundation::ObserverToken token) override;

  private:
    class Filter;

    /// A press that was offered to the monitors when Qt asked about shortcuts, which it does before
    /// it delivers the press itself.
    struct Decision {
        quint32 nativeKeyCode;
        quint64 timestamp;
        bool isSwallowed;
    };

    /// Whether the event ends here.
    bool filter(QObject& receiver, QEvent& event);
    bool filterPress(QKeyEvent& event);
    bool filterRelease(const QKeyEvent& event);
    bool offer(const QKeyEvent& event);
    [[nodiscard]] bool repeatsSwallowedPress(const QKeyEvent& event) const;
    void installOrRemoveFilter();

    NativeModifiers nativeModifiers_;
    foundation::ObserverList<std::optional<KeyEvent>&> handlers_;
    std::set<foundation::ObserverToken> tokens_;
    std::optional<Decision> decision_;
    /// The native key codes of swallowed presses, with the time of the release once that has come.
    /// A repetition is a release and a press of the same time, which Qt does not always recognise.
    std::map<quint32, std::optional<quint64>> held_;
    std::unique_ptr<Filter> filter_; ///< Made with the first monitor.
    bool isInstalled_ = false;
};

} // namespace platform
