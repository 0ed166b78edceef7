#include "Platform/Linux/Qt/QtKeyDownMonitors.h"
#include "tests/Contract/KeyDownMonitorsContract.h"
#include "tests/Support/QtDesktop.h"

#include <linux/input-event-codes.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>

namespace contract {

namespace {

class QtKeyDownMonitorsBackend final : public KeyDownMonitorsBackend {
  public:
    QtKeyDownMonitorsBackend() {
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
    platform::QtKeyDownMonitors monitors_;
    QLineEdit line_;
    quint64 time_ = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         KeyDownMonitorsContract,
                         (backend<KeyDownMonitorsBackend, QtKeyDownMonitorsBackend>("Qt")),
                         nameOfBackend<KeyDownMonitorsBackend>);

} // namespace contract
