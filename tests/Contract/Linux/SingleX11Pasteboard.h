#pragma once

#include "Foundation/Logger.h"
#include "Platform/Linux/Qt/QtEventLoop.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Pasteboard.h"
#include "tests/Support/PrivateXServer.h"

#include <QCoreApplication>
#include <memory>
#include <optional>
#include <string>

namespace testing_support {

/// An X11 pasteboard with its event loop.
class X11PasteboardOnALoop {
  public:
    explicit X11PasteboardOnALoop(const std::string& display);

    [[nodiscard]] platform::X11Pasteboard& pasteboard() { return pasteboard_; }

    [[nodiscard]] platform::EventLoop& loop() { return loop_; }

  private:
    int argumentCount_ = 1;
    std::string programName_ = "test";
    char* arguments_ = programName_.data();
    QCoreApplication application_{argumentCount_, &arguments_};
    platform::QtEventLoop loop_;
    platform::QtMainQueue queue_;
    platform::MemoryLogSink sink_;
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    platform::X11Pasteboard pasteboard_;
};

/// An X11 pasteboard on a private server, which reads back what it has set itself. The loop runs
/// between any two operations.
class SingleX11Pasteboard final : public platform::Pasteboard {
  public:
    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text,
                                 platform::PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer>
    string(platform::PasteboardType type) override;

  private:
    PrivateXServer server_;
    X11PasteboardOnALoop world_{server_.display()};
};

} // namespace testing_support
