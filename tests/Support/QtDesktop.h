#pragma once

#include "Foundation/Interface.h"
#include "tests/Support/DesktopSession.h"
#include "tests/Support/FakeKeyboard.h"

#include <QApplication>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace testing_support {

/// A private desktop on which this process is a program with real, managed windows. QtTestLoop's
/// functions run its event loop. One at a time.
class QtDesktop : foundation::Pinned {
  public:
    QtDesktop();
    ~QtDesktop();

    [[nodiscard]] FakeKeyboard& keyboard() { return *keyboard_; }

    [[nodiscard]] const DesktopSession& session() const { return session_; }

    /// The top-level widget with that title, or null.
    [[nodiscard]] static QWidget* widgetTitled(const std::string& title);

    /// Waits until the window has the focus, both to Qt and to the X server.
    [[nodiscard]] bool waitForFocus(const QWidget& window) const;

    /// Openbox may read an event and not handle it until the next one comes. This sends one, to be
    /// repeated while something is awaited.
    void nudgeWindowManager() const;

    /// Sets the keyboard layout with setxkbmap's arguments.
    void setLayout(const std::vector<std::string>& arguments) const;

    /// The output of a program on this desktop, such as xprop. Throws if it fails.
    [[nodiscard]] std::string output(const std::vector<std::string>& command) const;

  private:
    static inline char programName[] = "pastewise";
    static inline char* programArguments[] = {programName, nullptr};

    /// Waits until the window manager manages new windows.
    void waitForWindowManager() const;

    DesktopSession session_;
    int argumentCount_ = 1;
    std::unique_ptr<QApplication> application_;
    std::unique_ptr<FakeKeyboard> keyboard_;
};

} // namespace testing_support
