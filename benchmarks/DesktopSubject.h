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
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace benchmarks {

/// A program under measurement, on a private desktop without other users of hot keys or the
/// clipboard. Throws std::runtime_error if a measurement is not possible.
class DesktopSubject : foundation::Pinned {
  public:
    enum class Tray : std::uint8_t {
        none,
        /// A test program that reports when an icon's pixels arrive.
        reporting,
        /// A real panel. It loads no Qt library, so it does not reduce a subject's proportional
        /// memory.
        panel,
    };

    /// In seconds since just before the process was started.
    struct StartTimes {
        double hotKey = 0;
        /// nullopt if no icon appeared within the limit.
        std::optional<double> icon;
    };

    /// In seconds since just before the hot key was pressed.
    struct PasteTimes {
        double owner = 0;
        double wholeHtml = 0;
    };

    /// `command` is a program and its arguments.
    DesktopSubject(std::vector<std::string> command, Tray tray);
    ~DesktopSubject();

    /// The folder of the program's configuration.
    [[nodiscard]] const std::string& configurationFolder() const;

    void start();

    /// Starts the program and waits for its hot key and, with a reporting tray, up to `iconLimit`
    /// for its icon.
    [[nodiscard]] StartTimes timeStart(std::chrono::milliseconds iconLimit);

    /// Ends the program with all its processes.
    void stop();

    /// Copies the text from another program, presses the hot key half a second later and pastes
    /// into a third program, which must receive `html`. nullopt if nothing arrives within ten
    /// seconds.
    [[nodiscard]] std::optional<PasteTimes> timePaste(const std::string& text,
                                                      const std::string& html);

    /// Presses the hot key `count` times, each time after the HTML of the last one has arrived.
    void convertAgain(std::size_t count);

    [[nodiscard]] const DesktopProcesses& processes() const { return processes_; }

  private:
    [[nodiscard]] std::optional<double> iconTime(double begin);

    std::vector<std::string> command_;
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
