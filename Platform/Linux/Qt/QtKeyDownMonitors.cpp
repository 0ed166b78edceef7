#include "Platform/Linux/Qt/QtKeyDownMonitors.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QObject>
#include <utility>

namespace platform {

class QtKeyDownMonitors::Filter final : public QObject {
  public:
    explicit Filter(QtKeyDownMonitors& monitors) : monitors_(monitors) {}

    bool eventFilter(QObject* receiver, QEvent* event) override {
        return monitors_.filter(*receiver, *event);
    }

  private:
    QtKeyDownMonitors& monitors_;
};

QtKeyDownMonitors::QtKeyDownMonitors(NativeModifiers nativeModifiers)
    : nativeModifiers_(std::move(nativeModifiers)) {}

QtKeyDownMonitors::~QtKeyDownMonitors() = default;

foundation::ObserverToken QtKeyDownMonitors::addLocalMonitor(Handler handler) {
    const foundation::ObserverToken token =
        handlers_.add([handler = std::move(handler)](std::optional<KeyEvent>& event) {
            if (event) {
                event = handler(*event);
            }
        });
    tokens_.insert(token);
    installOrRemoveFilter();
    if (tokens_.size() == 1) {
        QGuiApplication::inputMethod()->update(Qt::ImEnabled);
    }
    return token;
}

void QtKeyDownMonitors::removeMonitor(foundation::ObserverToken token) {
    handlers_.remove(token);
    if (tokens_.erase(token) == 0) {
        return;
    }
    installOrRemoveFilter();
    if (tokens_.empty()) {
        QGuiApplication::inputMethod()->update(Qt::ImEnabled);
    }
}

bool QtKeyDownMonitors::filter(QObject& receiver, QEvent& event) {
    if (event.type() == QEvent::InputMethodQuery) {
        auto& query = static_cast<QInputMethodQueryEvent&>(event);
        const bool asksWhetherText = query.queries().testFlag(Qt::ImEnabled);
        if (asksWhetherText && !tokens_.empty()) {
            query.setValue(Qt::ImEnabled, false);
        }
        return asksWhetherText && !tokens_.empty();
    }
    // A window is where the system's event comes in, once; from there it wanders through widgets.
    if (!receiver.isWindowType()) {
        return false;
    }
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return filterPress(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease:
        return filterRelease(static_cast<QKeyEvent&>(event));
    case QEvent::FocusOut:
        // Another window hears of the releases.
        held_.clear();
        installOrRemoveFilter();
        return false;
    default:
        return false;
    }
}

bool QtKeyDownMonitors::filterPress(QKeyEvent& event) {
    if (isModifierKey(event)) {
        return false;
    }
    const auto decision = std::exchange(decision_, std::nullopt);
    const bool isDecided = event.type() == QEvent::KeyPress && decision &&
                           decision->nativeKeyCode == event.nativeScanCode() &&
                           decision->timestamp == event.timestamp();
    const bool isSwallowed = isDecided ? decision->isSwallowed : offer(event);
    if (event.type() == QEvent::ShortcutOverride) {
        decision_ = {event.nativeScanCode(), event.timestamp(), isSwallowed};
        // Somebody wants this key as a key: no shortcut is looked for.
        event.setAccepted(isSwallowed);
    }
    return isSwallowed;
}

bool QtKeyDownMonitors::filterRelease(const QKeyEvent& event) {
    const auto held = held_.find(event.nativeScanCode());
    if (held == held_.end()) {
        return false;
    }
    if (!event.isAutoRepeat()) {
        held->second = event.timestamp();
    }
    return true;
}

bool QtKeyDownMonitors::offer(const QKeyEvent& event) {
    const quint32 nativeKeyCode = event.nativeScanCode();
    if (tokens_.empty() && repeatsSwallowedPress(event)) {
        held_[nativeKeyCode].reset();
        return true;
    }
    // Whatever was released before has no repetitions any more.
    std::erase_if(held_, [](const auto& press) { return press.second.has_value(); });
    std::optional<KeyEvent> remaining = keyEvent(event, nativeModifiers_);
    handlers_.notify(remaining);
    if (remaining) {
        held_.erase(nativeKeyCode);
    } else if (nativeKeyCode != 0) {
        held_[nativeKeyCode].reset();
    }
    installOrRemoveFilter();
    return !remaining;
}

bool QtKeyDownMonitors::repeatsSwallowedPress(const QKeyEvent& event) const {
    const auto held = held_.find(event.nativeScanCode());
    return held != held_.end() && (event.isAutoRepeat() || held->second == event.timestamp());
}

void QtKeyDownMonitors::installOrRemoveFilter() {
    const bool isNeeded = !tokens_.empty() || !held_.empty();
    if (isNeeded == isInstalled_) {
        return;
    }
    isInstalled_ = isNeeded;
    if (isNeeded) {
        if (!filter_) {
            filter_ = std::make_unique<Filter>(*this);
        }
        QCoreApplication::instance()->installEventFilter(filter_.get());
    } else {
        QCoreApplication::instance()->removeEventFilter(filter_.get());
    }
}

} // namespace platform
