#include "Platform/Linux/X11/ClipboardHandOver.h"

#include "Platform/Linux/X11/X11ServerTime.h"

#include <cstdint>
#include <vector>

namespace platform {

ClipboardHandOver::ClipboardHandOver(const X11Connection& connection,
                                     X11EventQueue& events,
                                     const X11ClipboardAtoms& atoms,
                                     X11SelectionOwner& owner,
                                     std::chrono::milliseconds silence,
                                     foundation::Logger logger)
    : connection_(connection),
      events_(events),
      atoms_(atoms),
      owner_(owner),
      silence_(silence),
      logger_(logger) {}

void ClipboardHandOver::run() {
    if (owner_.offeredTexts().empty() || !owner_.owns()) {
        return;
    }
    const xcb_window_t managerWindow = manager();
    if (managerWindow == XCB_WINDOW_NONE) {
        return;
    }
    const auto askedAt = ask();
    if (!askedAt) {
        return;
    }
    const std::uint32_t idMask = xcb_get_setup(connection_.get())->resource_id_mask;
    auto deadline = X11EventQueue::Clock::now() + silence_;
    const auto any = [](const xcb_generic_event_t&) { return true; };
    while (const auto event = events_.waitFor(any, deadline)) {
        if (isAnswer(*event, *askedAt)) {
            if (eventAs<xcb_selection_notify_event_t>(*event).property == XCB_ATOM_NONE) {
                logger_.error("The clipboard manager refuses to keep the clipboard");
            }
            return;
        }
        owner_.handle(*event);
        // Other programs may go on asking for ever: only the manager is worth waiting for.
        if (isFrom(managerWindow, *event, idMask)) {
            deadline = X11EventQueue::Clock::now() + silence_;
        } else if (X11EventQueue::Clock::now() >= deadline) {
            break;
        }
    }
    logger_.error("The clipboard manager does not answer");
}

xcb_window_t ClipboardHandOver::manager() const {
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(),
        xcb_get_selection_owner(connection_.get(), atoms_.clipboardManager),
        nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

/// Asks the manager to save what we offer; the server's time of the question. None when the server
/// does not tell it.
std::optional<xcb_timestamp_t> ClipboardHandOver::ask() {
    constexpr std::uint8_t bitsPerAtom = 32;
    const auto time = serverTime(
        connection_, events_, atoms_, owner_.window(), X11EventQueue::Clock::now() + silence_);
    if (!time) {
        return std::nullopt;
    }
    const std::vector<xcb_atom_t> targets = owner_.offeredTexts();
    xcb_change_property(connection_.get(),
                        XCB_PROP_MODE_REPLACE,
                        owner_.window(),
                        atoms_.exchange,
                        XCB_ATOM_ATOM,
                        bitsPerAtom,
                        static_cast<std::uint32_t>(targets.size()),
                        targets.data());
    xcb_convert_selection(connection_.get(),
                          owner_.window(),
                          atoms_.clipboardManager,
                          atoms_.saveTargets,
                          atoms_.exchange,
                          *time);
    return time;
}

/// An answer names the time of its question: an earlier one may have been given up.
bool ClipboardHandOver::isAnswer(const xcb_generic_event_t& event, xcb_timestamp_t askedAt) const {
    if (eventType(event) != XCB_SELECTION_NOTIFY) {
        return false;
    }
    const auto& notify = eventAs<xcb_selection_notify_event_t>(event);
    return notify.requestor == owner_.window() && notify.selection == atoms_.clipboardManager &&
           notify.time == askedAt;
}

/// Whether the event comes from the same program as the window `client`: the server gives each
/// program its own range of identifiers, all alike but for the bits of `idMask`.
bool ClipboardHandOver::isFrom(xcb_window_t client,
                               const xcb_generic_event_t& event,
                               std::uint32_t idMask) {
    xcb_window_t window = XCB_WINDOW_NONE;
    if (eventType(event) == XCB_SELECTION_REQUEST) {
        window = eventAs<xcb_selection_request_event_t>(event).requestor;
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY) {
        window = eventAs<xcb_property_notify_event_t>(event).window;
    }
    return ((window ^ client) & ~idMask) == 0;
}

} // namespace platform
