#pragma once

#include "Foundation/Logger.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/Clipboard/TextTransfer.h"
#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/X11/X11ClipboardContext.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11SelectionOwner.h"
#include "Platform/Linux/X11/X11SelectionReader.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"

#include <memory>
#include <optional>

namespace platform {

/// The general clipboard of an X11 desktop: its CLIPBOARD selection. The primary selection, which
/// follows what is selected with the pointer, is never touched.
///
/// X11 stores no clipboard contents: this program serves them for as long as it owns the selection
/// and its event loop runs. They end with it unless handOver() finds a clipboard manager. Once the
/// server is gone, the clipboard is empty and refuses every text.
///
/// Waits for other clients are bounded. A wait for the server's reply is not: a server that another
/// client has grabbed blocks every program.
///
/// Main thread only.
class X11Pasteboard final : public Pasteboard {
  public:
    /// The connection is for this object only. Loop and queue outlive it.
    X11Pasteboard(std::unique_ptr<X11Connection> connection,
                  EventLoop& loop,
                  MainQueue& queue,
                  const foundation::LoggerFactory& loggers,
                  const TransferLimits& limits = {});
    ~X11Pasteboard() override;

    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override;

    /// Before the program exits: leaves its contents to the desktop's clipboard manager, if there
    /// is one. Bounded by the manager's progress; immediate if we own nothing.
    void handOver();

  private:
    void handleEvents();
    void handleDeferredEventsLater();

    X11ClipboardContext context_;
    MainQueue& queue_;
    X11SelectionOwner owner_;
    X11SelectionReader reader_;
    std::unique_ptr<FileDescriptorWatch> watch_;
    std::shared_ptr<WorkItem> pendingHandling_;
    /// Whether the last clearContents() succeeded.
    bool isAcquired_ = false;
};

} // namespace platform
