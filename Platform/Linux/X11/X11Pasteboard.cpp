#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Foundation/Utf8.h"
#include "Platform/Linux/X11/ClipboardHandOver.h"

#include <chrono>
#include <new>
#include <utility>

namespace platform {

namespace {

// So many events are handled before the rest of the program gets its turn: a fast receiver of a
// long text has the next one ready at once.
constexpr int eventsPerTurn = 64;

} // namespace

X11Pasteboard::X11Pasteboard(std::unique_ptr<X11Connection> connection,
                             EventLoop& loop,
                             MainQueue& queue,
                             const foundation::LoggerFactory& loggers,
                             const X11PasteboardLimits& limits)
    : connection_(std::move(connection)),
      queue_(queue),
      logger_(loggers.logger("X11Pasteboard")),
      limits_(limits),
      atoms_(*connection_),
      events_(*connection_),
      owner_(*connection_, events_, atoms_, queue_, limits_, logger_),
      reader_(*connection_, events_, atoms_, limits_, logger_),
      watch_(loop.watchReadable(connection_->fileDescriptor(), [this] { handleEvents(); })) {
    xcb_flush(connection_->get());
    handleEventsLater();
}

X11Pasteboard::~X11Pasteboard() {
    if (pendingHandling_) {
        pendingHandling_->cancel();
    }
}

void X11Pasteboard::clearContents() {
    hasBegun_ = false;
    try {
        hasBegun_ = owner_.acquire();
    } catch (const std::bad_alloc&) {
        logger_.error("There is no memory for taking the clipboard over");
    }
    if (!hasBegun_) {
        logger_.error("The clipboard cannot be taken over");
    }
    handleEventsLater();
}

bool X11Pasteboard::setString(foundation::TextBuffer text, PasteboardType type) {
    bool isHeld = false;
    if (!hasBegun_) {
        logger_.error("The clipboard has not been taken over");
    } else if (!owner_.owns()) {
        logger_.error("The clipboard belongs to another program");
    } else {
        try {
            owner_.hold(type, std::make_shared<const foundation::TextBuffer>(std::move(text)));
            isHeld = true;
        } catch (const std::bad_alloc&) {
            logger_.error("There is no memory for holding a text");
        }
    }
    handleEventsLater();
    return isHeld;
}

std::optional<foundation::TextBuffer> X11Pasteboard::string(PasteboardType type) {
    std::optional<foundation::TextBuffer> text;
    try {
        const xcb_window_t current = currentOwner();
        if (current == owner_.window()) {
            // Asking ourselves would be waiting for ourselves.
            if (const auto held = owner_.held(type)) {
                text.emplace(held->view());
            }
        } else if (current != XCB_WINDOW_NONE) {
            text = reader_.read(type);
            if (text) {
                text = foundation::repairUtf8(std::move(*text));
            }
        }
    } catch (const std::bad_alloc&) {
        text.reset();
        logger_.error("The text in the clipboard does not fit in memory");
    }
    handleEventsLater();
    return text;
}

void X11Pasteboard::handOver() {
    try {
        ClipboardHandOver(*connection_, events_, atoms_, owner_, limits_.silence, logger_).run();
    } catch (const std::bad_alloc&) {
        logger_.error("There is no memory for handing the clipboard over");
    }
    handleEventsLater();
}

xcb_window_t X11Pasteboard::currentOwner() const {
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_->get(),
                                      xcb_get_selection_owner(connection_->get(), atoms_.clipboard),
                                      nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void X11Pasteboard::handleEvents() {
    int handledCount = 0;
    while (handledCount < eventsPerTurn) {
        const auto event = events_.next();
        if (!event) {
            break;
        }
        owner_.handle(*event);
        reader_.handle(*event);
        ++handledCount;
    }
    if (!connection_->isAlive()) {
        // The descriptor of a broken connection stays readable: watching it would never end.
        if (watch_) {
            watch_.reset();
            logger_.error("The X server is gone");
        }
        return;
    }
    handleEventsLater();
}

/// Sees to events that were read from the server while somebody waited for others: the loop does
/// not learn of them.
void X11Pasteboard::handleEventsLater() {
    try {
        if (!events_.hasEvents() || (pendingHandling_ && !pendingHandling_->isCancelled())) {
            return;
        }
        pendingHandling_ = std::make_shared<WorkItem>([this] {
            pendingHandling_->cancel();
            handleEvents();
        });
        queue_.asyncAfter(std::chrono::milliseconds(0), pendingHandling_);
    } catch (const std::bad_alloc&) {
        // The next event that arrives is the next opportunity.
        pendingHandling_.reset();
        logger_.error("There is no memory for handling what other programs asked");
    }
}

} // namespace platform
