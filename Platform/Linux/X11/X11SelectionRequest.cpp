#include "Platform/Linux/X11/X11SelectionRequest.h"

#include "Platform/Linux/X11/X11ServerTime.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace platform {

namespace {

// XCB holds each reply whole: a long property is fetched in parts of this many bytes.
constexpr std::uint32_t partSize = 1024 * 1024;
constexpr std::uint32_t bytesPerUnit = 4;

// What an owner announces is a hint. Room is made beforehand up to here only; the rest as it comes.
constexpr std::size_t largestTrustedHint = std::size_t{16} * 1024 * 1024;

} // namespace

X11SelectionRequest::X11SelectionRequest(const X11Connection& connection,
                                         X11EventQueue& events,
                                         const X11ClipboardAtoms& atoms,
                                         const X11PasteboardLimits& limits,
                                         xcb_window_t window,
                                         int firstXfixesEvent)
    : connection_(connection),
      events_(events),
      atoms_(atoms),
      limits_(limits),
      window_(window),
      firstXfixesEvent_(firstXfixesEvent) {
    noteProgress();
    time_ = serverTime(connection_, events_, atoms_, window_, deadline_);
}

X11SelectionRequest::Answer X11SelectionRequest::convert(xcb_atom_t target) {
    Answer answer;
    if (!time_) {
        answer.outcome = Outcome::silent;
        return answer;
    }
    xcb_convert_selection(
        connection_.get(), window_, atoms_.clipboard, target, atoms_.exchange, *time_);
    const auto event = events_.waitFor(
        [&](const xcb_generic_event_t& candidate) {
            if (isOwnerChange(candidate)) {
                return true;
            }
            if (eventType(candidate) != XCB_SELECTION_NOTIFY) {
                return false;
            }
            const auto& notify = eventAs<xcb_selection_notify_event_t>(candidate);
            return notify.requestor == window_ && notify.selection == atoms_.clipboard &&
                   notify.target == target;
        },
        deadline_);
    if (!event) {
        answer.outcome = Outcome::silent;
    } else if (isOwnerChange(*event)) {
        answer.outcome = Outcome::ownerChanged;
    } else if (eventAs<xcb_selection_notify_event_t>(*event).property == XCB_ATOM_NONE) {
        answer.outcome = Outcome::refused;
    } else {
        answer.outcome = takeProperty(answer);
    }
    if (answer.outcome != Outcome::received) {
        return answer;
    }
    noteProgress();
    if (answer.type == atoms_.incr) {
        std::uint32_t sizeHint = 0;
        if (answer.bytes.size() >= sizeof sizeHint) {
            std::memcpy(&sizeHint, answer.bytes.view().data(), sizeof sizeHint);
        }
        return receiveInPieces(sizeHint);
    }
    return answer;
}

X11SelectionRequest::Answer X11SelectionRequest::receiveInPieces(std::size_t sizeHint) {
    Answer answer;
    answer.bytes.reserve(std::min({sizeHint, largestTrustedHint, limits_.maximumTextSize}));
    while (true) {
        const auto event = events_.waitFor(
            [&](const xcb_generic_event_t& candidate) {
                if (isOwnerChange(candidate)) {
                    return true;
                }
                if (eventType(candidate) != XCB_PROPERTY_NOTIFY) {
                    return false;
                }
                const auto& notify = eventAs<xcb_property_notify_event_t>(candidate);
                // Our own deletions as well: one for each piece would pile up among the events put
                // off, and looking for the next piece would take ever longer.
                return notify.window == window_ && notify.atom == atoms_.exchange;
            },
            deadline_);
        if (!event) {
            answer.outcome = Outcome::silent;
            return answer;
        }
        if (isOwnerChange(*event)) {
            answer.outcome = Outcome::ownerChanged;
            return answer;
        }
        const std::size_t sizeBefore = answer.bytes.size();
        const bool isNew =
            eventAs<xcb_property_notify_event_t>(*event).state == XCB_PROPERTY_NEW_VALUE;
        const Outcome outcome = isNew ? takeProperty(answer) : Outcome::refused;
        if (outcome == Outcome::refused) {
            // Nothing is there: the event told of a deletion, or of the announcement that was taken
            // already.
            if (X11EventQueue::Clock::now() >= deadline_) {
                answer.outcome = Outcome::silent;
                return answer;
            }
            continue;
        }
        noteProgress();
        if (outcome != Outcome::received || answer.bytes.size() == sizeBefore) {
            answer.outcome = outcome;
            return answer;
        }
    }
}

/// Appends what the exchange property holds to the answer and deletes the property, which is what
/// asks an owner that sends in pieces for the next one. `refused` when there is no property.
X11SelectionRequest::Outcome X11SelectionRequest::takeProperty(Answer& answer) {
    std::uint32_t offset = 0;
    while (true) {
        // The server deletes the property together with its last part.
        const XcbPointer<xcb_get_property_reply_t> part(
            xcb_get_property_reply(connection_.get(),
                                   xcb_get_property(connection_.get(),
                                                    1,
                                                    window_,
                                                    atoms_.exchange,
                                                    XCB_GET_PROPERTY_TYPE_ANY,
                                                    offset,
                                                    partSize / bytesPerUnit),
                                   nullptr));
        if (!part) {
            return Outcome::silent;
        }
        if (part->type == XCB_ATOM_NONE) {
            return offset == 0 ? Outcome::refused : Outcome::malformed;
        }
        const auto size = static_cast<std::size_t>(xcb_get_property_value_length(part.get()));
        if (answer.bytes.empty()) {
            answer.type = part->type;
            answer.format = part->format;
        } else if (size > 0 && (part->type != answer.type || part->format != answer.format)) {
            return Outcome::malformed;
        }
        const std::size_t needed = answer.bytes.size() + size + part->bytes_after;
        if (needed > limits_.maximumTextSize) {
            throw std::bad_alloc();
        }
        if (part->bytes_after > 0) {
            answer.bytes.reserve(needed);
        }
        answer.bytes.append({static_cast<const char*>(xcb_get_property_value(part.get())), size});
        if (part->bytes_after == 0) {
            return Outcome::received;
        }
        offset += partSize / bytesPerUnit;
    }
}

bool X11SelectionRequest::isOwnerChange(const xcb_generic_event_t& event) const {
    if (eventType(event) != firstXfixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        return false;
    }
    return eventAs<xcb_xfixes_selection_notify_event_t>(event).window == window_;
}

void X11SelectionRequest::noteProgress() {
    deadline_ = X11EventQueue::Clock::now() + limits_.silence;
}

} // namespace platform
