#include "tests/Platform/Linux/X11/X11ClipboardTest.h"

#include "Platform/Linux/X11/X11Connection.h"
#include "tests/Support/WaitUntil.h"

#include <algorithm>

namespace testing_support {

using foundation::TextBuffer;
using platform::PasteboardType;

X11ClipboardTest::X11ClipboardTest() {
    limits_.silence = patience;
}

void X11ClipboardTest::TearDown() {
    for (const auto& entry : sink_.entries()) {
        EXPECT_EQ(entry.category, "X11Pasteboard");
        EXPECT_EQ(entry.whole.find("milk"), std::string::npos) << entry.whole;
    }
}

void X11ClipboardTest::open() {
    auto connection = platform::X11Connection::open(server_->display());
    ASSERT_NE(connection, nullptr);
    pasteboard_ = std::make_unique<platform::X11Pasteboard>(
        std::move(connection), loop_, queue_, loggers_, limits_);
}

std::optional<std::string> X11ClipboardTest::read(PasteboardType type) const {
    const auto text = pasteboard_->string(type);
    return text ? std::optional<std::string>(text->view()) : std::nullopt;
}

bool X11ClipboardTest::convert(std::string_view text, std::string_view html) {
    pasteboard_->clearContents();
    return pasteboard_->setString(TextBuffer(text), PasteboardType::string) &&
           pasteboard_->setString(TextBuffer(html), PasteboardType::html);
}

X11ClipboardTest::Program X11ClipboardTest::startOwner(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{CLIPBOARD_OWNER};
    command.insert(command.end(), arguments.begin(), arguments.end());
    auto owner = std::make_unique<ChildProcess>(
        command, ChildProcess::Options{server_->environment(), {}, {}});
    EXPECT_TRUE(owner->waitForOutput("ready\n"));
    return owner;
}

X11ClipboardTest::Program X11ClipboardTest::startReader(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{CLIPBOARD_READER};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return std::make_unique<ChildProcess>(command,
                                          ChildProcess::Options{server_->environment(), {}, {}});
}

std::optional<int> X11ClipboardTest::turnUntilEnd(ChildProcess& program) {
    turnUntil([&] { return !program.isRunning(); });
    return program.waitForExit(std::chrono::milliseconds(0));
}

bool X11ClipboardTest::turnUntilOutput(ChildProcess& program, std::string_view text) {
    return turnUntil([&] { return program.waitForOutput(text, std::chrono::milliseconds(0)); });
}

std::optional<std::string> X11ClipboardTest::readElsewhere(const std::string& target) {
    const Program reader = startReader({"get", target});
    if (turnUntilEnd(*reader) != 0) {
        return std::nullopt;
    }
    return reader->standardOutput();
}

bool X11ClipboardTest::turnUntil(const std::function<bool()>& condition) {
    return waitUntil(condition, 3 * patience, [] { QCoreApplication::processEvents(); });
}

bool X11ClipboardTest::hasLogged(std::string_view message) const {
    const auto& entries = sink_.entries();
    return std::any_of(
        entries.begin(), entries.end(), [&](const auto& entry) { return entry.whole == message; });
}

} // namespace testing_support
