#include "Platform/Linux/X11/ClipboardHandOver.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

namespace {

/// Requests the manager to save our targets. The server time of the request, or nullopt if the
/// server does not answer.
std::optional<xcb_timestamp_t> requestSaving(X11ClipboardContext& context,
                                             const X11SelectionOwner& owner) {
    const auto time = context.events.serverTime(
        owner.window(), X11EventQueue::Clock::now() + context.limits.silence);
    if (!time) {
        return std::nullopt;
    }
    const X11ClipboardAtoms& atoms = context.atoms;
    const std::vector<xcb_atom_t> targets = owner.offeredTexts();
    context.connection->setProperty(
        owner.window(), atoms.exchange, XCB_ATOM_ATOM, targets.data(), targets.size());
    xcb_convert_selection(context.connection->get(),
                          owner.window(),
                          atoms.clipboardManager,
                          atoms.saveTargets,
                          atoms.exchange,
                          *time);
    return time;
}

/// Whether the event is from the client that created the window `manager`: the server assigns each
/// client a range of identifiers, which differ in the bits of `idMask` only.
bool isFromClientOf(xcb_window_t manager, const xcb_generic_event_t& event, std::uint32_t idMask) {
    xcb_window_t window = XCB_WINDOW_NONE;
    if (eventType(event) == XCB_SELECTION_REQUEST) {
        window = eventAs<xcb_selection_request_event_t>(event).requestor;
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY) {
        window = eventAs<xcb_property_notify_event_t>(event).window;
    }
    return ((window ^ manager) & ~idMask) == 0;
}

} // namespace

void handOverClipboard(X11ClipboardContext& context, X11SelectionOwner& owner) {
    if (owner.offeredTexts().empty() || !owner.owns()) {
        return;
    }
    const xcb_atom_t selection = context.atoms.clipboardManager;
    const xcb_window_t manager = context.connection->ownerOf(selection);
    if (manager == XCB_WINDOW_NONE) {
        return;
    }
    const auto requestTime = requestSaving(context, owner);
    if (!requestTime) {
        return;
    }
    const std::uint32_t idMask = xcb_get_setup(context.connection->get())->resource_id_mask;
    auto deadline = X11EventQueue::Clock::now() + context.limits.silence;
    const auto any = [](const xcb_generic_event_t&) { return true; };
    while (const auto event = context.events.waitFor(any, deadline)) {
        if (eventType(*event) == XCB_SELECTION_NOTIFY) {
            const auto& notify = eventAs<xcb_selection_notify_event_t>(*event);
            // The time tells this answer from a late one to an earlier request.
            if (notify.requestor == owner.window() && notify.selection == selection &&
                notify.time == *requestTime) {
                if (notify.property == XCB_ATOM_NONE) {
                    context.logger.error("The clipboard manager refuses to save the clipboard");
                }
                return;
            }
        }
        owner.handle(*event);
        // Only the manager's requests extend the wait: other clients may never stop.
        if (isFromClientOf(manager, *event, idMask)) {
            deadline = X11EventQueue::Clock::now() + context.limits.silence;
        } else if (X11EventQueue::Clock::now() >= deadline) {
            break;
        }
    }
    context.logger.error("The clipboard manager does not respond");
}

} // namespace platform
