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

/// A desktop of the test's own with this process as a program on it, whose windows are real ones
/// to the window manager. QtTestLoop's functions turn its event loop. One at a time.
class QtDesktop : foundation::Pinned {
  public:
    QtDesktop();
    ~QtDesktop();

    [[nodiscard]] FakeKeyboard& keyboard() { return *keyboard_; }

    [[nodiscard]] const DesktopSession& session() const { return session_; }

    /// The top-level widget with that title; null when there is none.
    [[nodiscard]] static QWidget* widgetTitled(const std::string& title);

    /// Turns the loop until the window has the keyboard, as far as both this program and the
    /// server know.
    [[nodiscard]] bool waitForFocus(const QWidget& window) const;

    /// Openbox may have read an event without looking at it before the next one comes: this is a
    /// next one, for the time while something is expected of it.
    void nudgeWindowManager() const;

    /// Sets the layouts of the keyboard, with setxkbmap's words.
    void setLayout(const std::vector<std::string>& arguments) const;

    /// What a program says about this desktop, for example xprop. Throws when it fails.
    [[nodiscard]] std::string output(const std::vector<std::string>& command) const;

  private:
    static inline char programName[] = "pastewise";
    static inline char* programArguments[] = {programName, nullptr};

    /// Waits until windows that are shown become managed.
    void waitForWindowManager() const;

    DesktopSession session_;
    int argumentCount_ = 1;
    std::unique_ptr<QApplication> application_;
    std::unique_ptr<FakeKeyboard> keyboard_;
};

} // namespace testing_support
