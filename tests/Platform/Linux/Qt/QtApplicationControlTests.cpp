#include "Platform/Linux/Qt/QtApplicationControl.h"
#include "tests/Platform/Linux/Qt/FormWindow.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

#include <QTimer>
#include <QWidget>

namespace {

using platform::QtApplicationControl;
using testing_support::QtDesktop;
using testing_support::QtTestLoop;

TEST(QtApplicationControlTests, BringsTheProgramsWindowsToTheFront) {
    QtDesktop desktop;
    const FormWindow form;
    form.window->makeKeyAndOrderFront();
    const QWidget& widget = *QtDesktop::widgetTitled("Form");
    ASSERT_TRUE(desktop.waitForFocus(widget));
    const testing_support::ChildProcess other({"xev"},
                                              {.environment = desktop.session().environment()});
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return !widget.isActiveWindow(); }));
    QtApplicationControl::activateIgnoringOtherApps();
    EXPECT_TRUE(desktop.waitForFocus(widget));
}

TEST(QtApplicationControlTests, LeavesHiddenWindowsHidden) {
    const QtDesktop desktop;
    const FormWindow form;
    QtApplicationControl::activateIgnoringOtherApps();
    QtTestLoop::turn();
    EXPECT_FALSE(form.window->isVisible());
}

TEST(QtApplicationControlTests, EndsTheEventLoopAfterItReturned) {
    const QtDesktop desktop;
    bool hasReturned = false;
    QTimer::singleShot(0, qApp, [&] {
        QtApplicationControl::terminate();
        QtTestLoop::turnUntil([] { return true; });
        hasReturned = true;
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(hasReturned);
}

} // namespace
