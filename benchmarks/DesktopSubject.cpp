#include "benchmarks/DesktopSubject.h"

#include "benchmarks/Timing.h"
#include "tests/Support/WaitUntil.h"

#include <linux/input-event-codes.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using testing_support::ChildProcess;
using testing_support::patience;
using testing_support::waitUntil;

/// Set in every process of a subject, including its descendants.
constexpr auto markVariable = "PASTEWISE_BENCHMARK_SUBJECT";

/// Fine enough for times of tens of milliseconds without loading the server.
constexpr std::chrono::microseconds probeInterval{500};

/// Programs that read every new clipboard have finished by then.
constexpr std::chrono::milliseconds settlingTime{500};

} // namespace

DesktopSubject::DesktopSubject(std::vector<std::string> command, Tray tray)
    : command_(std::move(command)),
      keyboard_(session_.display()),
      probe_(session_.display()),
      reader_(session_.display()),
      environment_(session_.environment()),
      processes_(markVariable, session_.display()) {
    if (tray == Tray::panel) {
        panel_ = std::make_unique<testing_support::PanelSession>(session_);
    } else if (tray == Tray::reporting) {
        reportingTray_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{PASTEWISE_TRAY_HOST},
            ChildProcess::Options{.environment = environment_, .keepsInputOpen = true});
        if (!reportingTray_->waitForOutput("ready")) {
            throw std::runtime_error("no tray: " + reportingTray_->standardError());
        }
    }
    environment_[markVariable] = session_.display();
    // Single-instance sockets are created there.
    environment_["TMPDIR"] = environment_.at("HOME");
}

DesktopSubject::~DesktopSubject() {
    stop();
}

const std::string& DesktopSubject::configurationFolder() const {
    return environment_.at("XDG_CONFIG_HOME");
}

void DesktopSubject::start() {
    process_ = std::make_unique<ChildProcess>(command_,
                                              ChildProcess::Options{.environment = environment_});
}

DesktopSubject::StartTimes DesktopSubject::timeStart(std::chrono::milliseconds iconLimit) {
    // The server notices the end of a program slightly later than we do.
    if (!waitUntil([this] { return !probe_.isTaken(); })) {
        throw std::runtime_error("the hot key is taken before " + command_.front() + " starts");
    }
    const double begin = now();
    start();
    StartTimes times;
    while (!probe_.isTaken()) {
        if (now() - begin > std::chrono::duration<double>(patience).count()) {
            throw std::runtime_error(command_.front() +
                                     " takes no hot key: " + process_->standardError());
        }
        std::this_thread::sleep_for(probeInterval);
    }
    times.hotKey = now() - begin;
    waitUntil(
        [&] {
            times.icon = iconTime(begin);
            return times.icon.has_value();
        },
        iconLimit);
    if (times.icon) {
        *times.icon -= begin;
    }
    return times;
}

void DesktopSubject::stop() {
    if (!process_) {
        return;
    }
    process_->sendSignal(SIGTERM);
    process_->waitForExit();
    process_.reset();
    if (!waitUntil([this] { return processes_.ids().empty(); }, std::chrono::seconds(2))) {
        for (const pid_t id : processes_.ids()) {
            kill(id, SIGKILL);
        }
    }
}

std::optional<DesktopSubject::PasteTimes> DesktopSubject::timePaste(const std::string& text,
                                                                    const std::string& html) {
    ChildProcess owner({PASTEWISE_CLIPBOARD_OWNER, "normal", "--text", "-"},
                       {.environment = session_.environment(), .standardInput = text});
    if (!owner.waitForOutput("ready")) {
        throw std::runtime_error("nothing to convert: " + owner.standardError());
    }
    std::this_thread::sleep_for(settlingTime);
    reader_.forgetOwners();
    keyboard_.press(KEY_LEFTMETA);
    const double begin = now();
    keyboard_.press(KEY_G);
    const auto received = reader_.awaitHtml(patience);
    keyboard_.release(KEY_G);
    keyboard_.release(KEY_LEFTMETA);
    if (!received) {
        return std::nullopt;
    }
    if (received->html != html) {
        throw std::runtime_error(command_.front() + " gives wrong HTML for " +
                                 std::to_string(text.size()) + " bytes of text");
    }
    return PasteTimes{.owner = received->ownerAt - begin,
                      .wholeHtml = received->completeAt - begin};
}

void DesktopSubject::convertAgain(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        reader_.forgetOwners();
        keyboard_.press(KEY_LEFTMETA);
        keyboard_.press(KEY_G);
        const bool isConverted = reader_.awaitHtml(patience).has_value();
        keyboard_.release(KEY_G);
        keyboard_.release(KEY_LEFTMETA);
        if (!isConverted) {
            throw std::runtime_error(command_.front() + " converts only sometimes");
        }
    }
}

/// When the first icon after `begin` arrived, in seconds as from now().
std::optional<double> DesktopSubject::iconTime(double begin) {
    if (!reportingTray_) {
        return std::nullopt;
    }
    std::istringstream lines(reportingTray_->standardOutput());
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
        const nlohmann::json event = nlohmann::json::parse(line);
        const double time = event.at("time").get<double>() / 1e9;
        if (time > begin && event.at("event") == "icon" && event.contains("sizes") &&
            !event["sizes"].empty()) {
            return time;
        }
    }
    return std::nullopt;
}

} // namespace benchmarks
