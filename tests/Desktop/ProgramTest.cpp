#include "tests/Desktop/ProgramTest.h"

#include <linux/input-event-codes.h>

namespace program_test {

using testing_support::ChildProcess;
using testing_support::waitUntil;

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

void ProgramTest::startProgram(const std::map<std::string, std::string>& additional) {
    auto environment = session_.environment();
    for (const auto& [name, value] : additional) {
        environment[name] = value;
    }
    environment["QT_FORCE_STDERR_LOGGING"] = "1";
    environment["QT_LOGGING_RULES"] = "com.app.pastewise.*=true";
    program_ = std::make_unique<ChildProcess>(std::vector<std::string>{PASTEWISE_PROGRAM},
                                              ChildProcess::Options{.environment = environment});
    ASSERT_TRUE(program_->waitForOutput("Application launched successfully"))
        << program_->standardError();
}

std::unique_ptr<ChildProcess> ProgramTest::startOwner(std::vector<std::string> arguments,
                                                      const std::string& standardInput) {
    arguments.insert(arguments.begin(), PASTEWISE_CLIPBOARD_OWNER);
    auto owner =
        std::make_unique<ChildProcess>(arguments,
                                       ChildProcess::Options{.environment = session_.environment(),
                                                             .standardInput = standardInput});
    EXPECT_TRUE(owner->waitForOutput("ready")) << owner->standardError();
    return owner;
}

std::string ProgramTest::paste(const std::string& target) {
    return runTool({PASTEWISE_CLIPBOARD_READER, "get", target});
}

void ProgramTest::pressShortcut() {
    keyboard_.tapTogether({KEY_LEFTMETA, KEY_G});
}

std::size_t ProgramTest::logged(std::string_view message) {
    return countOf(program_->standardError(), message);
}

bool ProgramTest::waitForLog(std::string_view message, std::size_t count) {
    return waitUntil([&] { return logged(message) >= count; });
}

void ProgramTest::convert() {
    const std::size_t before = logged(wroteMessage);
    pressShortcut();
    ASSERT_TRUE(waitForLog(wroteMessage, before + 1)) << program_->standardError();
}

void ProgramTest::expectNoText(ChildProcess& owner) {
    pressShortcut();
    EXPECT_TRUE(waitForLog(noTextMessage)) << program_->standardError();
    EXPECT_EQ(logged(wroteMessage), 0U);
    EXPECT_EQ(owner.standardOutput().find("lost"), std::string::npos);
    EXPECT_TRUE(owner.isRunning());
}

std::string ProgramTest::runTool(const std::vector<std::string>& command) {
    ChildProcess tool(command, {.environment = session_.environment()});
    EXPECT_EQ(tool.waitForExit(), 0) << command.front() << ": " << tool.standardError();
    return tool.standardOutput();
}

} // namespace program_test
