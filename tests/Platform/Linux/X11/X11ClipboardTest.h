#pragma once

#include "Foundation/Logger.h"
#include "Platform/Linux/Clipboard/TextTransfer.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/PrivateXServer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// An X server, an event loop, and other programs on the same clipboard.
class X11ClipboardTest : public testing::Test {
  protected:
    static constexpr std::size_t megabyte = std::size_t{1024} * 1024;

    using Program = std::unique_ptr<ChildProcess>;

    X11ClipboardTest();

    /// Checks that no clipboard text was logged.
    void TearDown() override;

    /// Makes the pasteboard under test, with limits_.
    void open();

    /// Reads from the pasteboard under test.
    [[nodiscard]] std::optional<std::string> read(platform::PasteboardType type) const;

    [[nodiscard]] std::optional<std::string> readString() const {
        return read(platform::PasteboardType::string);
    }

    /// Clears the pasteboard and sets both types, without running the loop. False on failure.
    bool convert(std::string_view text, std::string_view html);

    /// Starts a program that owns the clipboard (tests/Desktop/ClipboardOwner.cpp) and waits until
    /// it does.
    [[nodiscard]] Program startOwner(const std::vector<std::string>& arguments);

    /// Starts a program that reads it (tests/Desktop/ClipboardReader.cpp).
    [[nodiscard]] Program startReader(const std::vector<std::string>& arguments);

    /// Runs the loop until the program exits; its exit code.
    std::optional<int> turnUntilEnd(ChildProcess& program);

    /// Runs the loop until the program has written `text`.
    bool turnUntilOutput(ChildProcess& program, std::string_view text);

    /// What another program receives as `target`; nullopt if it is refused or times out.
    std::optional<std::string> readElsewhere(const std::string& target);

    bool turnUntil(const std::function<bool()>& condition);

    /// Shortens the time limit of the pasteboard that open() creates. By default it is as long as
    /// the tests', so that a busy machine does not look like an unresponsive program.
    void beImpatient() { limits_.silence = std::chrono::milliseconds(500); }

    [[nodiscard]] bool hasLogged(std::string_view message) const;

    std::unique_ptr<PrivateXServer> server_ = std::make_unique<PrivateXServer>();
    int argumentCount_ = 1;
    std::string programName_ = "test";
    char* arguments_ = programName_.data();
    QCoreApplication application_{argumentCount_, &arguments_};
    platform::QtEventLoop loop_;
    platform::QtMainQueue queue_;
    platform::MemoryLogSink sink_;
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    platform::TransferLimits limits_;
    std::unique_ptr<platform::X11Pasteboard> pasteboard_;
};

} // namespace testing_support
