#pragma once

#include <QApplication>

namespace tray_test {

/// The toolkit without a screen, for the time of a test.
class OffscreenApplication {
  public:
    OffscreenApplication() = default;

  private:
    static inline char programName[] = "test";
    static inline char platformOption[] = "-platform";
    static inline char platformName[] = "offscreen";
    char* arguments_[4] = {programName, platformOption, platformName, nullptr};
    int argumentCount_ = 3;
    QApplication application_{argumentCount_, arguments_};
};

} // namespace tray_test
