#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Foundation/Unicode.h"

#include <chrono>
#include <new>
#include <utility>

namespace platform {

namespace {

// Maximum events handled before the loop gets its turn: a fast receiver of a long text always has
// the next one ready.
constexpr int eventsPerTurn = 64;

} // namespace

X11Pasteboard::X11Pasteboard(std::unique_ptr<X11Connection> connection,
                             EventLoop& loop,
                             MainQueue& queue,
                             const foundation::LoggerFactory& loggers,
                             const TransferLimits& limits)
    : context_(std::move(connection), limits, loggers.logger("X11Pasteboard")),
      queue_(queue),
      owner_(context_, queue_),
      reader_(context_),
      watch_(
          loop.watchReadable(context_.connection->fileDescriptor(), [this] { handleEvents(); })) {
    xcb_flush(context_.connection->get());
    handleDeferredEventsLater();
}

X11Pasteboard::~X11Pasteboard() {
    if (pendingHandling_) {
        pendingHandling_->cancel();
    }
}

void X11Pasteboard::clearContents() {
    isAcquired_ = false;
    try {
        isAcquired_ = owner_.acquire();
    } catch (const std::bad_alloc&) {
        context_.logger.error("Out of memory while taking over the clipboard");
    }
    if (!isAcquired_) {
        context_.logger.error("Cannot take over the clipboard");
    }
    handleDeferredEventsLater();
}

bool X11Pasteboard::setString(foundation::TextBuffer text, PasteboardType type) {
    bool isHeld = false;
    try {
        if (!isAcquired_) {
            context_.logger.error("The clipboard was not taken over");
        } else if (!owner_.owns()) {
            context_.logger.error("The clipboard belongs to another program");
        } else {
            owner_.hold(type, std::make_shared<const foundation::TextBuffer>(std::move(text)));
            isHeld = true;
        }
    } catch (const std::bad_alloc&) {
        context_.logger.error("Out of memory while storing a text");
    }
    handleDeferredEventsLater();
    return isHeld;
}

std::optional<foundation::TextBuffer> X11Pasteboard::string(PasteboardType type) {
    std::optional<foundation::TextBuffer> text;
    try {
        const xcb_window_t current = context_.connection->ownerOf(context_.atoms.clipboard);
        if (current == owner_.window()) {
            // A request to ourselves would never be answered.
            if (const auto held = owner_.held(type)) {
                text = foundation::repairUtf8(foundation::TextBuffer(held->view()));
            }
        } else if (current != XCB_WINDOW_NONE) {
            text = reader_.read(type);
        }
    } catch (const std::bad_alloc&) {
        text.reset();
        context_.logger.error("The text in the clipboard does not fit in memory");
    }
    handleDeferredEventsLater();
    return text;
}

void X11Pasteboard::handOver() {
    try {
        owner_.handOver();
    } catch (const std::bad_alloc&) {
        context_.logger.error("Out of memory while handing over the clipboard");
    }
    handleDeferredEventsLater();
}

void X11Pasteboard::handleEvents() {
    for (int handledCount = 0; handledCount < eventsPerTurn; ++handledCount) {
        const auto event = context_.events.next();
        if (!event) {
            break;
        }
        owner_.handle(*event);
        reader_.handle(*event);
    }
    if (context_.connection->isAlive()) {
        handleDeferredEventsLater();
    } else if (watch_) {
        // The descriptor of a broken connection stays readable forever.
        watch_.reset();
        context_.logger.error("The X server is gone");
    }
}

/// Schedules the events that a wait has already read, which the loop does not learn of.
void X11Pasteboard::handleDeferredEventsLater() {
    try {
        if (!context_.events.hasEvents() || pendingHandling_) {
            return;
        }
        auto item = std::make_shared<WorkItem>([this] {
            const auto running = std::exchange(pendingHandling_, nullptr);
            handleEvents();
        });
        queue_.asyncAfter(std::chrono::milliseconds(0), item);
        pendingHandling_ = std::move(item);
    } catch (const std::bad_alloc&) {
        // The next event is the next opportunity.
        context_.logger.error("Out of memory while handling clipboard requests");
    }
}

} // namespace platform
