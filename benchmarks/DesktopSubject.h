#pragma once

#include "Foundation/Interface.h"
#include "benchmarks/DesktopHotKeyProbe.h"
#include "benchmarks/DesktopHtmlReader.h"
#include "benchmarks/DesktopProcesses.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/DesktopSession.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/PanelSession.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace benchmarks {

/// A program that is measured, on a desktop of its own where nobody else takes hot keys or the
/// clipboard. What keeps a figure from being taken is thrown as a std::runtime_error.
class DesktopSubject : foundation::Pinned {
  public:
    enum class Tray : std::uint8_t {
        none,
        /// A test program that tells when the pixels of an icon have arrived.
        reporting,
        /// A real panel. It shares no library of the toolkit with any subject, so that it makes
        /// none of them seem smaller.
        panel,
    };

    /// In seconds since the moment before the process was made.
    struct StartTimes {
        double hotKey = 0;
        /// None when no icon came within the limit.
        std::optional<double> icon;
    };

    /// In seconds since the moment before the hot key was pressed.
    struct PasteTimes {
        double owner = 0;
        double wholeHtml = 0;
    };

    DesktopSubject(std::string program, Tray tray);
    ~DesktopSubject();

    /// Where the program finds its configuration.
    [[nodiscard]] const std::string& configurationFolder() const;

    void start();

    /// Starts the program and waits for its hot key and, on a reporting tray, up to `iconLimit` for
    /// its icon.
    [[nodiscard]] StartTimes timeStart(std::chrono::milliseconds iconLimit);

    /// Ends the program with all its processes.
    void stop();

    /// Copies the text as another program, presses the hot key half a second later, and pastes as
    /// a third one; what it receives must be `html`. None when nothing comes for ten seconds.
    [[nodiscard]] std::optional<PasteTimes> timePaste(const std::string& text,
                                                      const std::string& html);

    [[nodiscard]] const DesktopProcesses& processes() const { return processes_; }

  private:
    [[nodiscard]] std::optional<double> iconTime(double begin);

    std::string program_;
    testing_support::DesktopSession session_;
    testing_support::FakeKeyboard keyboard_;
    DesktopHotKeyProbe probe_;
    DesktopHtmlReader reader_;
    std::map<std::string, std::string> environment_;
    DesktopProcesses processes_;
    std::unique_ptr<testing_support::PanelSession> panel_;
    std::unique_ptr<testing_support::ChildProcess> reportingTray_;
    std::unique_ptr<testing_support::ChildProcess> process_;
};

} // namespace benchmarks
