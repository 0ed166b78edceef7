#include "Platform/Linux/X11/X11SelectionRequest.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace platform {

namespace {

// XCB buffers each reply as a whole, so a long property is read in parts of this many units.
constexpr std::uint32_t unitsPerPart = 256 * 1024;

// An announced size is only a hint: memory is reserved up to this size, and beyond it as data
// arrives.
constexpr std::size_t largestTrustedHint = std::size_t{16} * 1024 * 1024;

constexpr std::uint32_t ownerChanges = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                       XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                       XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;

} // namespace

X11SelectionRequest::X11SelectionRequest(X11ClipboardContext& context)
    : context_(context), window_(context.connection->createWindow()) {
    xcb_xfixes_select_selection_input(
        context_.connection->get(), window_, context_.atoms.clipboard, ownerChanges);
    noteProgress();
    time_ = context_.events.serverTime(window_, deadline_);
}

X11SelectionRequest::~X11SelectionRequest() {
    const X11Connection& connection = *context_.connection;
    connection.selectEvents(window_, XCB_EVENT_MASK_NO_EVENT);
    xcb_xfixes_select_selection_input(connection.get(), window_, context_.atoms.clipboard, 0);
    xcb_flush(connection.get());
}

X11SelectionRequest::Answer X11SelectionRequest::convert(xcb_atom_t target) {
    Answer answer;
    if (!time_) {
        answer.outcome = Outcome::silent;
        return answer;
    }
    const X11ClipboardAtoms& atoms = context_.atoms;
    xcb_convert_selection(
        context_.connection->get(), window_, atoms.clipboard, target, atoms.exchange, *time_);
    X11EventQueue::Event event;
    answer.outcome = waitFor(event, [&](const xcb_generic_event_t& candidate) {
        if (eventType(candidate) != XCB_SELECTION_NOTIFY) {
            return false;
        }
        const auto& notify = eventAs<xcb_selection_notify_event_t>(candidate);
        return notify.requestor == window_ && notify.selection == atoms.clipboard &&
               notify.target == target;
    });
    if (answer.outcome == Outcome::received) {
        answer.outcome = eventAs<xcb_selection_notify_event_t>(*event).property == XCB_ATOM_NONE
                             ? Outcome::refused
                             : takeProperty(answer);
    }
    if (answer.outcome != Outcome::received) {
        return answer;
    }
    noteProgress();
    if (answer.type != atoms.incr) {
        return answer;
    }
    std::uint32_t sizeHint = 0;
    if (answer.bytes.size() >= sizeof sizeHint) {
        std::memcpy(&sizeHint, answer.bytes.view().data(), sizeof sizeHint);
    }
    return receiveIncrementally(sizeHint);
}

/// `received` if an event that satisfies `isAwaited` arrived.
X11SelectionRequest::Outcome
X11SelectionRequest::waitFor(X11EventQueue::Event& event,
                             const X11EventQueue::Predicate& isAwaited) {
    event = context_.events.waitFor(
        [&](const xcb_generic_event_t& candidate) {
            return isOwnerChange(candidate) || isAwaited(candidate);
        },
        deadline_);
    if (!event) {
        return Outcome::silent;
    }
    return isOwnerChange(*event) ? Outcome::ownerChanged : Outcome::received;
}

X11SelectionRequest::Answer X11SelectionRequest::receiveIncrementally(std::size_t sizeHint) {
    Answer answer;
    answer.bytes.reserve(std::min({sizeHint, largestTrustedHint, context_.limits.maximumTextSize}));
    while (true) {
        X11EventQueue::Event event;
        answer.outcome = waitFor(event, [&](const xcb_generic_event_t& candidate) {
            // Including our own deletions: deferred, one for each piece, they would make the search
            // for the next piece ever slower.
            return eventType(candidate) == XCB_PROPERTY_NOTIFY &&
                   eventAs<xcb_property_notify_event_t>(candidate).window == window_ &&
                   eventAs<xcb_property_notify_event_t>(candidate).atom == context_.atoms.exchange;
        });
        if (answer.outcome != Outcome::received) {
            return answer;
        }
        const std::size_t sizeBefore = answer.bytes.size();
        const auto& notify = eventAs<xcb_property_notify_event_t>(*event);
        const Outcome outcome =
            notify.state == XCB_PROPERTY_NEW_VALUE ? takeProperty(answer) : Outcome::refused;
        if (outcome != Outcome::refused) {
            noteProgress();
            if (outcome != Outcome::received || answer.bytes.size() == sizeBefore) {
                answer.outcome = outcome;
                return answer;
            }
        } else if (X11EventQueue::Clock::now() >= deadline_) {
            // Events without a property: of deletions, or of the announcement that was taken.
            answer.outcome = Outcome::silent;
            return answer;
        }
    }
}

/// Appends the exchange property to the answer and deletes it, which requests the next piece of an
/// incremental transfer. `refused` if there is no property.
X11SelectionRequest::Outcome X11SelectionRequest::takeProperty(Answer& answer) {
    for (std::uint32_t first = 0;; first += unitsPerPart) {
        const auto part = context_.connection->property(
            window_, context_.atoms.exchange, first, unitsPerPart, true);
        if (!part) {
            return Outcome::silent;
        }
        if (part->type == XCB_ATOM_NONE) {
            return first == 0 ? Outcome::refused : Outcome::malformed;
        }
        const auto size = static_cast<std::size_t>(xcb_get_property_value_length(part.get()));
        if (answer.bytes.empty()) {
            answer.type = part->type;
            answer.format = part->format;
        } else if (size > 0 && (part->type != answer.type || part->format != answer.format)) {
            return Outcome::malformed;
        }
        const std::size_t needed = answer.bytes.size() + size + part->bytes_after;
        if (needed > context_.limits.maximumTextSize) {
            throw std::bad_alloc();
        }
        if (part->bytes_after > 0) {
            answer.bytes.reserve(needed);
        }
        answer.bytes.append({static_cast<const char*>(xcb_get_property_value(part.get())), size});
        if (part->bytes_after == 0) {
            return Outcome::received;
        }
    }
}

bool X11SelectionRequest::isOwnerChange(const xcb_generic_event_t& event) const {
    return eventType(event) == context_.ownerChangeEvent &&
           eventAs<xcb_xfixes_selection_notify_event_t>(event).window == window_;
}

void X11SelectionRequest::noteProgress() {
    deadline_ = X11EventQueue::Clock::now() + context_.limits.silence;
}

} // namespace platform
