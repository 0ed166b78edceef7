#include "Platform/Linux/X11/X11SelectionReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using Outcome = X11SelectionRequest::Outcome;

constexpr std::uint8_t bitsPerByte = 8;
constexpr std::uint8_t bitsPerAtom = 32;

// The windows of recent reads are kept: an owner that answers late, or cleans up after a long
// transfer, still finds its requestor. Otherwise it would get an X error, which terminates a client
// that does not expect it, together with what the user copied from it.
constexpr std::size_t retiredWindowLimit = 8;

std::vector<xcb_atom_t> atomsOf(const X11SelectionRequest::Answer& answer) {
    const std::string_view bytes = answer.bytes.view();
    std::vector<xcb_atom_t> atoms(bytes.size() / sizeof(xcb_atom_t));
    if (!atoms.empty()) {
        std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
    }
    return atoms;
}

} // namespace

X11SelectionReader::~X11SelectionReader() {
    for (const xcb_window_t window : retiredWindows_) {
        xcb_destroy_window(context_.connection->get(), window);
    }
    xcb_flush(context_.connection->get());
}

std::optional<foundation::TextBuffer> X11SelectionReader::read(PasteboardType type) {
    X11SelectionRequest request(context_);
    retire(request.window());
    const auto targets = request.convert(context_.atoms.targets);
    if (isOver(targets.outcome)) {
        return std::nullopt;
    }
    const bool isList = targets.outcome == Outcome::received && targets.format == bitsPerAtom;
    // Old clients own texts without being able to list their targets.
    const FormatNames offers = isList ? context_.atoms.formatNames(atomsOf(targets))
                                      : FormatNames{"UTF8_STRING", "STRING"};
    const std::vector<TextFormat> formats = acceptable(type, offers);
    if (formats.empty() || listsFiles(offers, request)) {
        return std::nullopt;
    }
    return firstOf(formats, request);
}

std::optional<foundation::TextBuffer>
X11SelectionReader::firstOf(const std::vector<TextFormat>& formats,
                            X11SelectionRequest& request) const {
    for (const TextFormat& format : formats) {
        auto answer = request.convert(context_.atoms.format(format.name));
        if (isOver(answer.outcome)) {
            return std::nullopt;
        }
        if (answer.outcome != Outcome::received || answer.format != bitsPerByte) {
            continue;
        }
        // The type of an answer to STRING or TEXT states its encoding.
        if (format.encoding == TextEncoding::latin1 && answer.type == context_.atoms.utf8String) {
            return decode(std::move(answer.bytes), TextEncoding::utf8);
        }
        if (format.encoding != TextEncoding::latin1 || answer.type == XCB_ATOM_STRING) {
            return decode(std::move(answer.bytes), format.encoding);
        }
    }
    context_.logger.error("The clipboard owner refuses to convert its text");
    return std::nullopt;
}

/// True also if the owner cannot be asked any more.
bool X11SelectionReader::listsFiles(const FormatNames& offers, X11SelectionRequest& request) const {
    if (!contains(offers, uriListFormat)) {
        return false;
    }
    const auto uriList = request.convert(context_.atoms.format(uriListFormat));
    return isOver(uriList.outcome) ||
           (uriList.outcome == Outcome::received && startsWithFile(uriList.bytes.view()));
}

/// Whether it is useless to request anything else from the owner.
bool X11SelectionReader::isOver(Outcome outcome) const {
    switch (outcome) {
    case Outcome::silent:
        context_.logger.error("The clipboard owner does not respond");
        return true;
    case Outcome::ownerChanged:
        context_.logger.error("The clipboard owner changed during a read");
        return true;
    case Outcome::malformed:
        // The rest may still arrive, and would be mistaken for the next answer.
        context_.logger.error("The clipboard owner violates the transfer protocol");
        return true;
    case Outcome::received:
    case Outcome::refused:
        break;
    }
    return false;
}

void X11SelectionReader::handle(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_SELECTION_NOTIFY) {
        return;
    }
    const xcb_window_t window = eventAs<xcb_selection_notify_event_t>(event).requestor;
    if (std::find(retiredWindows_.begin(), retiredWindows_.end(), window) ==
        retiredWindows_.end()) {
        return;
    }
    const X11Connection& connection = *context_.connection;
    const auto answer = connection.property(window, context_.atoms.exchange, 0, 0, false);
    // Deleting the announcement of an incremental transfer would request its first piece.
    if (answer && answer->type != context_.atoms.incr) {
        xcb_delete_property(connection.get(), window, context_.atoms.exchange);
        xcb_flush(connection.get());
    }
}

void X11SelectionReader::retire(xcb_window_t window) {
    retiredWindows_.push_back(window);
    if (retiredWindows_.size() > retiredWindowLimit) {
        xcb_destroy_window(context_.connection->get(), retiredWindows_.front());
        retiredWindows_.pop_front();
    }
}

} // namespace platform
