#include "Platform/Linux/X11/X11SelectionOwner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <utility>

namespace platform {

namespace {

constexpr std::uint8_t bitsPerValue = 32;

// Maximum conversions in one MULTIPLE request, far above the number of targets that any owner has.
constexpr std::uint32_t multipleLimit = 256;

/// Compares sequence numbers, which wrap around.
bool isBefore(std::uint32_t left, std::uint32_t right) {
    return static_cast<std::int32_t>(left - right) < 0;
}

/// Whether `left` is less than a day before `right`. Server times wrap around after 49 days, and a
/// text may be owned for weeks: a greater distance means that `left` is later.
bool isShortlyBefore(xcb_timestamp_t left, xcb_timestamp_t right) {
    constexpr xcb_timestamp_t day = 24 * 60 * 60 * 1000;
    return left != right && right - left < day;
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

X11SelectionOwner::X11SelectionOwner(X11ClipboardContext& context, MainQueue& queue)
    : context_(context), transfers_(context, queue), window_(context.connection->createWindow()) {}

X11SelectionOwner::~X11SelectionOwner() {
    xcb_destroy_window(context_.connection->get(), window_);
    xcb_flush(context_.connection->get());
}

bool X11SelectionOwner::acquire() {
    const X11Connection& connection = *context_.connection;
    const auto time =
        context_.events.serverTime(window_, X11EventQueue::Clock::now() + context_.limits.silence);
    if (!time) {
        return false;
    }
    texts_.clear();
    ownedSince_ = *time;
    acquisition_ =
        xcb_set_selection_owner(connection.get(), window_, context_.atoms.clipboard, *time)
            .sequence;
    isOwner_ = connection.ownerOf(context_.atoms.clipboard) == window_;
    return isOwner_;
}

bool X11SelectionOwner::owns() {
    const auto deadline = X11EventQueue::Clock::now() + context_.limits.silence;
    return isOwner_ &&
           !context_.events.hasReceived([this](const auto& event) { return isLoss(event); },
                                        deadline) &&
           context_.connection->isAlive();
}

void X11SelectionOwner::hold(PasteboardType type,
                             std::shared_ptr<const foundation::TextBuffer> text) {
    texts_.insert_or_assign(type, std::move(text));
}

std::shared_ptr<const foundation::TextBuffer> X11SelectionOwner::held(PasteboardType type) const {
    const auto text = texts_.find(type);
    return text == texts_.end() ? nullptr : text->second;
}

std::vector<xcb_atom_t> X11SelectionOwner::offeredTexts() const {
    std::vector<xcb_atom_t> targets;
    for (const TextFormat& format : offeredFormats) {
        if (texts_.contains(format.type)) {
            targets.push_back(context_.atoms.format(format.name));
        }
    }
    return targets;
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event) {
    switch (eventType(event)) {
    case XCB_SELECTION_REQUEST:
        serve(eventAs<xcb_selection_request_event_t>(event));
        break;
    case XCB_SELECTION_CLEAR:
        if (isLoss(event)) {
            texts_.clear();
            isOwner_ = false;
        }
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = eventAs<xcb_property_notify_event_t>(event);
        if (notify.state == XCB_PROPERTY_DELETE) {
            transfers_.handleDeletion({.window = notify.window, .property = notify.atom});
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        transfers_.endAllTo(eventAs<xcb_destroy_notify_event_t>(event).window);
        break;
    default:
        break;
    }
    xcb_flush(context_.connection->get());
}

bool X11SelectionOwner::isLoss(const xcb_generic_event_t& event) const {
    if (eventType(event) != XCB_SELECTION_CLEAR) {
        return false;
    }
    const auto& clear = eventAs<xcb_selection_clear_event_t>(event);
    return clear.owner == window_ && clear.selection == context_.atoms.clipboard &&
           !isBefore(event.full_sequence, acquisition_);
}

void X11SelectionOwner::serve(const xcb_selection_request_event_t& request) {
    // Obsolete clients specify no property and expect the answer in the one named by the target.
    const xcb_atom_t property =
        request.property == XCB_ATOM_NONE ? request.target : request.property;
    bool isConverted = false;
    try {
        if (!isForUs(request)) {
            isConverted = false;
        } else if (request.target == context_.atoms.multiple) {
            isConverted =
                request.property != XCB_ATOM_NONE && convertMultiple(request.requestor, property);
        } else {
            isConverted = convert(request.requestor, request.target, property);
        }
    } catch (const std::bad_alloc&) {
        context_.logger.error("Out of memory while serving a clipboard request");
    }
    const xcb_selection_notify_event_t notify{
        .response_type = XCB_SELECTION_NOTIFY,
        .pad0 = 0,
        .sequence = 0,
        .time = request.time,
        .requestor = request.requestor,
        .selection = request.selection,
        .target = request.target,
        .property = isConverted ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE)};
    // Every event takes 32 bytes on the wire, however short its structure.
    std::array<char, 32> wire{};
    static_assert(sizeof notify <= wire.size());
    std::memcpy(wire.data(), &notify, sizeof notify);
    xcb_send_event(
        context_.connection->get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
}

bool X11SelectionOwner::isForUs(const xcb_selection_request_event_t& request) const {
    // Our own window is never a requestor: it waits for the server's time.
    return isOwner_ && request.owner == window_ && request.requestor != window_ &&
           request.selection == context_.atoms.clipboard &&
           (request.time == XCB_CURRENT_TIME || !isShortlyBefore(request.time, ownedSince_));
}

bool X11SelectionOwner::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    const X11Connection& connection = *context_.connection;
    const X11ClipboardAtoms& atoms = context_.atoms;
    if (target == atoms.targets) {
        std::vector<xcb_atom_t> targets = offeredTexts();
        targets.insert(targets.end(),
                       {atoms.targets, atoms.multiple, atoms.timestamp, atoms.saveTargets});
        connection.setProperty(requestor, property, XCB_ATOM_ATOM, targets.data(), targets.size());
        return true;
    }
    if (target == atoms.timestamp) {
        connection.setProperty(requestor, property, XCB_ATOM_INTEGER, &ownedSince_, 1);
        return true;
    }
    if (target == atoms.saveTargets) {
        connection.setProperty<std::uint32_t>(requestor, property, atoms.null, nullptr, 0);
        return true;
    }
    const auto* const format =
        std::find_if(offeredFormats.begin(), offeredFormats.end(), [&](const TextFormat& one) {
            return target == atoms.format(one.name);
        });
    auto text = format == offeredFormats.end() ? nullptr : held(format->type);
    if (!text) {
        return false;
    }
    // TEXT is a request for the owner's preferred encoding, which the type states.
    const xcb_atom_t type = format->name == "TEXT" ? atoms.utf8String : target;
    return transfers_.send({.window = requestor, .property = property},
                           type,
                           encode(std::move(text), format->encoding));
}

/// Each pair in the property requests a conversion; a failed one gets its property replaced there.
bool X11SelectionOwner::convertMultiple(xcb_window_t requestor, xcb_atom_t property) {
    const X11Connection& connection = *context_.connection;
    const auto reply = connection.property(requestor, property, 0, multipleLimit * 2, false);
    if (!reply || reply->format != bitsPerValue || reply->bytes_after > 0) {
        return false;
    }
    std::vector<xcb_atom_t> pairs(reply->value_len);
    if (pairs.empty() || pairs.size() % 2 != 0) {
        return false;
    }
    std::memcpy(
        pairs.data(), xcb_get_property_value(reply.get()), pairs.size() * sizeof(xcb_atom_t));
    bool haveAllSucceeded = true;
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        const xcb_atom_t target = pairs[i];
        xcb_atom_t& destination = pairs[i + 1];
        if (destination == XCB_ATOM_NONE || !convert(requestor, target, destination)) {
            destination = XCB_ATOM_NONE;
            haveAllSucceeded = false;
        }
    }
    if (!haveAllSucceeded) {
        connection.setProperty(
            requestor, property, context_.atoms.atomPair, pairs.data(), pairs.size());
    }
    return true;
}

void X11SelectionOwner::handOver() {
    const X11Connection& connection = *context_.connection;
    if (texts_.empty() || !owns()) {
        return;
    }
    const xcb_window_t manager = connection.ownerOf(context_.atoms.clipboardManager);
    if (manager == XCB_WINDOW_NONE) {
        return;
    }
    const auto requestTime = requestSaving();
    if (!requestTime) {
        return;
    }
    const std::uint32_t idMask = xcb_get_setup(connection.get())->resource_id_mask;
    auto deadline = X11EventQueue::Clock::now() + context_.limits.silence;
    const auto any = [](const xcb_generic_event_t&) { return true; };
    while (const auto event = context_.events.waitFor(any, deadline)) {
        if (eventType(*event) == XCB_SELECTION_NOTIFY) {
            const auto& notify = eventAs<xcb_selection_notify_event_t>(*event);
            // The time tells this answer from a late one to an earlier request.
            if (notify.requestor == window_ &&
                notify.selection == context_.atoms.clipboardManager &&
                notify.time == *requestTime) {
                if (notify.property == XCB_ATOM_NONE) {
                    context_.logger.error("The clipboard manager refuses to save the clipboard");
                }
                return;
            }
        }
        handle(*event);
        // Only the manager's requests extend the wait: other clients may never stop.
        if (isFromClientOf(manager, *event, idMask)) {
            deadline = X11EventQueue::Clock::now() + context_.limits.silence;
        } else if (X11EventQueue::Clock::now() >= deadline) {
            break;
        }
    }
    context_.logger.error("The clipboard manager does not respond");
}

/// Requests the manager to save our targets. The server time of the request, or nullopt if the
/// server does not answer.
std::optional<xcb_timestamp_t> X11SelectionOwner::requestSaving() {
    const X11ClipboardAtoms& atoms = context_.atoms;
    const auto time =
        context_.events.serverTime(window_, X11EventQueue::Clock::now() + context_.limits.silence);
    if (time) {
        const std::vector<xcb_atom_t> targets = offeredTexts();
        context_.connection->setProperty(
            window_, atoms.exchange, XCB_ATOM_ATOM, targets.data(), targets.size());
        xcb_convert_selection(context_.connection->get(),
                              window_,
                              atoms.clipboardManager,
                              atoms.saveTargets,
                              atoms.exchange,
                              *time);
    }
    return time;
}

} // namespace platform
