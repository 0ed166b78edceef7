#pragma once

#include "Foundation/Logger.h"
#include "Foundation/TextBuffer.h"
#include "Platform/Linux/EventLoop.h"
#include "Platform/Linux/X11/X11ClipboardAtoms.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11EventQueue.h"
#include "Platform/Linux/X11/X11PasteboardLimits.h"
#include "Platform/Linux/X11/X11SelectionOwner.h"
#include "Platform/Linux/X11/X11SelectionReader.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"

#include <memory>
#include <optional>

namespace platform {

/// The general clipboard of an X11 desktop: its CLIPBOARD selection. The primary selection, which
/// follows what is marked with the pointer, is left alone.
///
/// X11 has no place for a clipboard: this program is asked for the contents for as long as it owns
/// them, and gives them away while its event loop runs. They end with it unless handOver() finds
/// somebody to keep them. When the server is lost the clipboard is empty and refuses every text.
///
/// Waiting for other programs is bounded. Waiting for a reply of the server itself is not: one that
/// another program has grabbed for itself stops every program until it lets go.
///
/// Main thread only.
class X11Pasteboard final : public Pasteboard {
  public:
    /// The connection is for this object alone. Loop and queue outlive it.
    X11Pasteboard(std::unique_ptr<X11Connection> connection,
                  EventLoop& loop,
                  MainQueue& queue,
                  const foundation::LoggerFactory& loggers,
                  const X11PasteboardLimits& limits = {});
    ~X11Pasteboard() override;

    void clearContents() override;
    [[nodiscard]] bool setString(foundation::TextBuffer text, PasteboardType type) override;
    [[nodiscard]] std::optional<foundation::TextBuffer> string(PasteboardType type) override;

    /// Before the program ends: leaves what it owns to the desktop's clipboard manager, if there is
    /// one. Bounded by the manager's progress, and immediate when we own nothing.
    void handOver();

  private:
    [[nodiscard]] xcb_window_t currentOwner() const;
    void handleEvents();
    void handleEventsLater();

    const std::unique_ptr<X11Connection> connection_;
    MainQueue& queue_;
    const foundation::Logger logger_;
    const X11PasteboardLimits limits_;
    const X11ClipboardAtoms atoms_;
    X11EventQueue events_;
    X11SelectionOwner owner_;
    X11SelectionReader reader_;
    std::unique_ptr<FileDescriptorWatch> watch_;
    std::shared_ptr<WorkItem> pendingHandling_;
    /// Whether the last clearContents() took the clipboard over.
    bool hasBegun_ = false;
};

} // namespace platform
