#include "tests/Desktop/ResidentTest.h"

#include <csignal>
#include <sstream>
#include <string>
#include <vector>

namespace program_test {

using testing_support::ChildProcess;
using testing_support::waitUntil;

namespace {

constexpr const char* preferencesTitle = "Pastewise Preferences";

} // namespace

std::filesystem::path ResidentTest::settingsPath() const {
    return session_.environment().at("XDG_CONFIG_HOME") + "/pastewise/com.app.pastewise.plist";
}

std::optional<StoredSettings> ResidentTest::settings() const {
    return StoredSettings::read(settingsPath());
}

std::unique_ptr<ChildProcess>
ResidentTest::startAgain(const std::map<std::string, std::string>& environment,
                         std::vector<std::string> launcher) {
    auto whole = session_.environment();
    whole["QT_FORCE_STDERR_LOGGING"] = "1";
    whole["QT_LOGGING_RULES"] = "com.app.pastewise.*=true";
    for (const auto& [name, value] : environment) {
        whole[name] = value;
    }
    launcher.emplace_back(PASTEWISE_PROGRAM);
    return std::make_unique<ChildProcess>(launcher, ChildProcess::Options{.environment = whole});
}

std::unique_ptr<ChildProcess> ResidentTest::requestAction(const std::string& name) {
    return std::make_unique<ChildProcess>(
        std::vector<std::string>{"gdbus",
                                 "call",
                                 "--session",
                                 "--dest",
                                 "com.app.pastewise",
                                 "--object-path",
                                 "/com/app/pastewise",
                                 "--method",
                                 "org.freedesktop.Application.ActivateAction",
                                 name,
                                 "[]",
                                 "{}"},
        ChildProcess::Options{.environment = session_.environment()});
}

void ResidentTest::waitForName() {
    runTool({"gdbus", "wait", "--session", "--timeout", "10", "com.app.pastewise"});
}

void ResidentTest::activate(const std::string& action) {
    waitForName();
    const auto request = requestAction(action);
    EXPECT_EQ(request->waitForExit(), 0) << request->standardError();
}

void ResidentTest::awaitEventLoop() {
    // The program refuses this from its event loop.
    EXPECT_NE(requestAction("none")->waitForExit(), 0);
}

bool ResidentTest::waitForEndOfFlash() {
    return waitUntil([this] {
        const std::string& log = program_->standardError();
        const std::size_t flashed = log.rfind("Flashing checkmark icon in menu bar");
        const std::size_t restored = log.rfind("Restoring base status icon after flash");
        return flashed == std::string::npos ||
               (restored != std::string::npos && restored > flashed);
    });
}

void ResidentTest::endProgram() {
    program_->sendSignal(SIGTERM);
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
}

std::string ResidentTest::output(const std::vector<std::string>& command) {
    ChildProcess tool(command, {.environment = session_.environment()});
    return tool.waitForExit() == 0 ? tool.standardOutput() : std::string();
}

std::size_t ResidentTest::preferencesWindowCount() {
    return countOf(output({"xdotool",
                           "search",
                           "--onlyvisible",
                           "--name",
                           std::string("^") + preferencesTitle + "$"}),
                   "\n");
}

std::string ResidentTest::uppermostWindow() {
    // The manager of windows lists them from the lowest to the uppermost; panels stay above all.
    std::istringstream stack(output({"xprop", "-root", "_NET_CLIENT_LIST_STACKING"}));
    std::string uppermost;
    for (std::string word; stack >> word;) {
        word = word.substr(0, word.find(','));
        if (word.starts_with("0x") &&
            output({"xprop", "-id", word, "_NET_WM_WINDOW_TYPE"}).find("_TYPE_DOCK") ==
                std::string::npos) {
            uppermost = word;
        }
    }
    return uppermost;
}

bool ResidentTest::isInFront(const std::string& title) {
    const std::string uppermost = uppermostWindow();
    const std::string active = output({"xdotool", "getactivewindow"});
    return !active.empty() && !uppermost.empty() &&
           std::stoul(active) == std::stoul(uppermost, nullptr, 0) &&
           output({"xdotool", "getactivewindow", "getwindowname"}) == title + "\n";
}

void ResidentTest::nudgeWindowManager() {
    runTool({"xprop", "-root", "-f", "PASTEWISE_TEST", "8s", "-set", "PASTEWISE_TEST", "x"});
}

bool ResidentTest::waitForPreferencesInFront() {
    return waitUntil([this] {
        nudgeWindowManager();
        return preferencesWindowCount() == 1 && isInFront(preferencesTitle);
    });
}

std::unique_ptr<ChildProcess> ResidentTest::openOtherWindow() {
    auto other = std::make_unique<ChildProcess>(
        std::vector<std::string>{"xev", "-name", "Another window"},
        ChildProcess::Options{.environment = session_.environment()});
    EXPECT_TRUE(waitUntil([this] {
        nudgeWindowManager();
        return isInFront("Another window");
    }));
    return other;
}

void ResidentTest::tidyDesktop() {
    runTool({"xsetroot", "-solid", "#dde5ee"});
}

namespace {

std::string geometry(const ScreenArea& area) {
    return std::to_string(area.width) + "x" + std::to_string(area.height) + "+" +
           std::to_string(area.x) + "+" + std::to_string(area.y);
}

} // namespace

Picture ResidentTest::look(const ScreenArea& area) {
    return {area,
            runTool({"import",
                     "-silent",
                     "-window",
                     "root",
                     "-crop",
                     geometry(area),
                     "+repage",
                     "-depth",
                     "8",
                     "ppm:-"})};
}

void ResidentTest::takeScreenshot(const std::string& name, const ScreenArea& area) {
    std::filesystem::create_directories(PASTEWISE_SCREENSHOTS);
    runTool({"import",
             "-silent",
             "-window",
             "root",
             "-crop",
             geometry(area),
             "+repage",
             std::string(PASTEWISE_SCREENSHOTS) + "/" + name});
}

void ResidentTest::clickAt(int x, int y, int button) {
    runTool({"xdotool", "mousemove", std::to_string(x), std::to_string(y)});
    keyboard_.pressButton(button);
    keyboard_.releaseButton(button);
}

} // namespace program_test
