#include "Platform/Linux/X11/X11SelectionOwner.h"

#include "Platform/Linux/X11/Latin1.h"
#include "Platform/Linux/X11/X11ServerTime.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <utility>

namespace platform {

namespace {

constexpr std::uint8_t bitsPerByte = 8;
constexpr std::uint8_t bitsPerValue = 32;

// The most conversions that one MULTIPLE request may ask for: nobody offers nearly as many.
constexpr std::uint32_t multipleLimit = 256;

/// Whether a request's number is older than another; they wrap around.
bool isBefore(std::uint32_t left, std::uint32_t right) {
    return static_cast<std::int32_t>(left - right) < 0;
}

/// Whether a server time is less than a day older than another. What seems older still is newer: a
/// text may be owned for weeks, in which the times wrap around.
bool isShortlyBefore(xcb_timestamp_t left, xcb_timestamp_t right) {
    constexpr xcb_timestamp_t day = 24 * 60 * 60 * 1000;
    return left != right && right - left < day;
}

std::size_t largestChunk(const X11Connection& connection, std::size_t wanted) {
    constexpr std::size_t bytesPerUnit = 4;
    constexpr std::size_t requestOverhead = 64;
    const std::size_t largestRequest =
        std::size_t{xcb_get_maximum_request_length(connection.get())} * bytesPerUnit;
    return std::min(wanted, largestRequest - std::min(largestRequest, requestOverhead));
}

} // namespace

X11SelectionOwner::X11SelectionOwner(const X11Connection& connection,
                                     X11EventQueue& events,
                                     const X11ClipboardAtoms& atoms,
                                     MainQueue& queue,
                                     const X11PasteboardLimits& limits,
                                     foundation::Logger logger)
    : connection_(connection),
      events_(events),
      atoms_(atoms),
      queue_(queue),
      limits_(limits),
      logger_(logger),
      chunkSize_(largestChunk(connection, limits.chunkSize)),
      window_(xcb_generate_id(connection.get())) {
    const std::uint32_t propertyEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(),
                      0,
                      window_,
                      connection_.screen().root,
                      0,
                      0,
                      1,
                      1,
                      0,
                      XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK,
                      &propertyEvents);
}

X11SelectionOwner::~X11SelectionOwner() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_flush(connection_.get());
}

bool X11SelectionOwner::acquire() {
    const auto time = serverTime(
        connection_, events_, atoms_, window_, X11EventQueue::Clock::now() + limits_.silence);
    if (!time) {
        return false;
    }
    texts_.clear();
    isOwner_ = false;
    acquisition_ =
        xcb_set_selection_owner(connection_.get(), window_, atoms_.clipboard, *time).sequence;
    ownedSince_ = *time;
    isOwner_ = true;
    isOwner_ = owns();
    return isOwner_;
}

bool X11SelectionOwner::owns() const {
    if (!isOwner_) {
        return false;
    }
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), atoms_.clipboard), nullptr));
    return reply && reply->owner == window_;
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
    if (texts_.contains(PasteboardType::html)) {
        targets.push_back(atoms_.html);
    }
    if (texts_.contains(PasteboardType::string)) {
        targets.insert(targets.end(),
                       {atoms_.plainTextUtf8,
                        atoms_.utf8String,
                        atoms_.plainText,
                        atoms_.text,
                        XCB_ATOM_STRING});
    }
    return targets;
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event) {
    switch (eventType(event)) {
    case XCB_SELECTION_REQUEST:
        serve(eventAs<xcb_selection_request_event_t>(event));
        break;
    case XCB_SELECTION_CLEAR: {
        const auto& clear = eventAs<xcb_selection_clear_event_t>(event);
        // An owner that we have replaced since is no reason to let go.
        if (clear.owner == window_ && clear.selection == atoms_.clipboard &&
            !isBefore(event.full_sequence, acquisition_)) {
            texts_.clear();
            isOwner_ = false;
        }
        break;
    }
    case XCB_PROPERTY_NOTIFY:
        continueTransfer(eventAs<xcb_property_notify_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        endTransfersTo(eventAs<xcb_destroy_notify_event_t>(event).window);
        break;
    default:
        break;
    }
    xcb_flush(connection_.get());
}

void X11SelectionOwner::serve(const xcb_selection_request_event_t& request) {
    // Clients of the oldest kind name no property and expect the target's.
    const xcb_atom_t property =
        request.property == XCB_ATOM_NONE ? request.target : request.property;
    bool isGiven = false;
    try {
        isGiven = isForUs(request) && giveWhatIsAsked(request, property);
    } catch (const std::bad_alloc&) {
        logger_.error("There is no memory for giving a text away");
    }
    const xcb_selection_notify_event_t notify{
        .response_type = XCB_SELECTION_NOTIFY,
        .pad0 = 0,
        .sequence = 0,
        .time = request.time,
        .requestor = request.requestor,
        .selection = request.selection,
        .target = request.target,
        .property = isGiven ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE)};
    // On the wire every event has the same size, however short its structure.
    std::array<char, 32> wire{};
    static_assert(sizeof notify <= wire.size());
    std::memcpy(wire.data(), &notify, sizeof notify);
    xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
}

bool X11SelectionOwner::giveWhatIsAsked(const xcb_selection_request_event_t& request,
                                        xcb_atom_t property) {
    if (request.target != atoms_.multiple) {
        return convert(request.requestor, request.target, property);
    }
    return request.property != XCB_ATOM_NONE && convertMultiple(request.requestor, property);
}

bool X11SelectionOwner::isForUs(const xcb_selection_request_event_t& request) const {
    // Nobody else's window is this one, on which we wait for the server's time.
    return isOwner_ && request.owner == window_ && request.requestor != window_ &&
           request.selection == atoms_.clipboard &&
           (request.time == XCB_CURRENT_TIME || !isShortlyBefore(request.time, ownedSince_));
}

bool X11SelectionOwner::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    if (target == atoms_.targets) {
        std::vector<std::uint32_t> targets = offeredTexts();
        targets.insert(targets.end(),
                       {atoms_.targets, atoms_.multiple, atoms_.timestamp, atoms_.saveTargets});
        setProperty(requestor, property, XCB_ATOM_ATOM, targets);
        return true;
    }
    if (target == atoms_.timestamp) {
        setProperty(requestor, property, XCB_ATOM_INTEGER, {ownedSince_});
        return true;
    }
    if (target == atoms_.saveTargets) {
        setProperty(requestor, property, atoms_.null, {});
        return true;
    }
    if (target == atoms_.html) {
        return give({requestor, property, target}, held(PasteboardType::html));
    }
    const auto string = held(PasteboardType::string);
    if (target == atoms_.plainTextUtf8 || target == atoms_.utf8String ||
        target == atoms_.plainText) {
        return give({requestor, property, target}, string);
    }
    if (target == atoms_.text) {
        return give({requestor, property, atoms_.utf8String}, string);
    }
    if (target == XCB_ATOM_STRING && string) {
        return give({requestor, property, target},
                    std::make_shared<const foundation::TextBuffer>(latin1FromUtf8(string->view())));
    }
    return false;
}

/// Each pair in the property asks for one conversion; those that fail lose their property there.
bool X11SelectionOwner::convertMultiple(xcb_window_t requestor, xcb_atom_t property) {
    const XcbPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.get(),
                               xcb_get_property(connection_.get(),
                                                0,
                                                requestor,
                                                property,
                                                XCB_GET_PROPERTY_TYPE_ANY,
                                                0,
                                                multipleLimit * 2),
                               nullptr));
    if (!reply || reply->format != bitsPerValue || reply->bytes_after > 0) {
        return false;
    }
    std::vector<std::uint32_t> pairs(reply->value_len);
    if (pairs.empty() || pairs.size() % 2 != 0) {
        return false;
    }
    std::memcpy(
        pairs.data(), xcb_get_property_value(reply.get()), pairs.size() * sizeof(std::uint32_t));
    bool haveAllWorked = true;
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        const xcb_atom_t target = pairs[i];
        xcb_atom_t& destination = pairs[i + 1];
        if (destination == XCB_ATOM_NONE || !convert(requestor, target, destination)) {
            destination = XCB_ATOM_NONE;
            haveAllWorked = false;
        }
    }
    if (!haveAllWorked) {
        setProperty(requestor, property, atoms_.atomPair, pairs);
    }
    return true;
}

bool X11SelectionOwner::give(const X11OutgoingTransfer::Receiver& receiver,
                             std::shared_ptr<const foundation::TextBuffer> text) {
    if (!text) {
        return false;
    }
    // A receiver that asks again has given up what it was getting there.
    endTransfer(receiver.window, receiver.property);
    if (text->size() <= chunkSize_) {
        xcb_change_property(connection_.get(),
                            XCB_PROP_MODE_REPLACE,
                            receiver.window,
                            receiver.property,
                            receiver.type,
                            bitsPerByte,
                            static_cast<std::uint32_t>(text->size()),
                            text->view().data());
        return true;
    }
    const std::uint32_t receiverEvents =
        XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        connection_.get(),
        xcb_change_window_attributes_checked(
            connection_.get(), receiver.window, XCB_CW_EVENT_MASK, &receiverEvents)));
    if (error) {
        // Nobody waits there any more.
        return false;
    }
    transfers_.push_back(std::make_unique<X11OutgoingTransfer>(
        connection_,
        atoms_,
        queue_,
        receiver,
        std::move(text),
        X11OutgoingTransfer::Limits{.chunkSize = chunkSize_, .silence = limits_.sending},
        [this, window = receiver.window, property = receiver.property] {
            // What this tells the server only spares us events: it goes with what the next one
            // brings about.
            endTransfer(window, property);
        }));
    return true;
}

void X11SelectionOwner::setProperty(xcb_window_t requestor,
                                    xcb_atom_t property,
                                    xcb_atom_t type,
                                    const std::vector<std::uint32_t>& values) {
    xcb_change_property(connection_.get(),
                        XCB_PROP_MODE_REPLACE,
                        requestor,
                        property,
                        type,
                        bitsPerValue,
                        static_cast<std::uint32_t>(values.size()),
                        values.data());
}

void X11SelectionOwner::continueTransfer(const xcb_property_notify_event_t& event) {
    if (event.state != XCB_PROPERTY_DELETE) {
        return;
    }
    const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](const auto& one) {
        return one->receiver().window == event.window && one->receiver().property == event.atom;
    });
    if (transfer != transfers_.end() && !(*transfer)->sendNext()) {
        endTransfer(event.window, event.atom);
    }
}

void X11SelectionOwner::endTransfer(xcb_window_t window, xcb_atom_t property) {
    const auto isMeant = [&](const auto& transfer) {
        return transfer->receiver().window == window && transfer->receiver().property == property;
    };
    if (std::erase_if(transfers_, isMeant) == 0) {
        return;
    }
    const bool isStillUsed =
        std::any_of(transfers_.begin(), transfers_.end(), [&](const auto& transfer) {
            return transfer->receiver().window == window;
        });
    if (!isStillUsed) {
        const std::uint32_t noEvents = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &noEvents);
    }
}

void X11SelectionOwner::endTransfersTo(xcb_window_t window) {
    std::erase_if(transfers_,
                  [&](const auto& transfer) { return transfer->receiver().window == window; });
}

} // namespace platform
