#include "Platform/Linux/X11/X11OutgoingTransfers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace platform {

namespace {

/// What fits into one request, at most `wanted`.
std::size_t largestChunk(const X11Connection& connection, std::size_t wanted) {
    constexpr std::size_t bytesPerUnit = 4;
    constexpr std::size_t requestOverhead = 64;
    const std::size_t largestRequest =
        std::size_t{xcb_get_maximum_request_length(connection.get())} * bytesPerUnit;
    return std::min(wanted, largestRequest - std::min(largestRequest, requestOverhead));
}

} // namespace

X11OutgoingTransfers::X11OutgoingTransfers(const X11ClipboardContext& context, MainQueue& queue)
    : context_(context),
      queue_(queue),
      chunkSize_(largestChunk(*context.connection, context.limits.chunkSize)) {}

X11OutgoingTransfers::~X11OutgoingTransfers() {
    if (check_) {
        check_->cancel();
    }
}

bool X11OutgoingTransfers::send(const Receiver& receiver,
                                xcb_atom_t type,
                                std::shared_ptr<const foundation::TextBuffer> text) {
    // A receiver that asks again has abandoned the transfer to the same property.
    end(receiver);
    const X11Connection& connection = *context_.connection;
    if (text->size() <= chunkSize_) {
        connection.setProperty(
            receiver.window, receiver.property, type, text->view().data(), text->size());
        return true;
    }
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const XcbPointer<xcb_generic_error_t> error(
        xcb_request_check(connection.get(),
                          xcb_change_window_attributes_checked(
                              connection.get(), receiver.window, XCB_CW_EVENT_MASK, &events)));
    if (error) {
        return false;
    }
    if (!check_) {
        watchProgress();
    }
    const auto size = static_cast<std::uint32_t>(
        std::min<std::size_t>(text->size(), std::numeric_limits<std::int32_t>::max()));
    transfers_.push_back({.receiver = receiver, .type = type, .text = std::move(text)});
    connection.setProperty(receiver.window, receiver.property, context_.atoms.incr, &size, 1);
    return true;
}

void X11OutgoingTransfers::handleDeletion(const Receiver& receiver) {
    const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](const auto& one) {
        return one.receiver == receiver;
    });
    if (transfer == transfers_.end()) {
        return;
    }
    if (transfer->hasEnded) {
        end(receiver);
        return;
    }
    // An empty piece marks the end of the text.
    const std::string_view piece = transfer->text->view().substr(transfer->sentCount, chunkSize_);
    context_.connection->setProperty(
        receiver.window, receiver.property, transfer->type, piece.data(), piece.size());
    transfer->sentCount += piece.size();
    transfer->hasEnded = piece.empty();
    transfer->hasProgressed = true;
}

void X11OutgoingTransfers::endAllTo(xcb_window_t window) {
    std::erase_if(transfers_, [&](const auto& one) { return one.receiver.window == window; });
}

void X11OutgoingTransfers::end(Receiver receiver) {
    if (std::erase_if(transfers_, [&](const auto& one) { return one.receiver == receiver; }) == 0) {
        return;
    }
    const bool isStillUsed =
        std::any_of(transfers_.begin(), transfers_.end(), [&](const auto& one) {
            return one.receiver.window == receiver.window;
        });
    if (!isStillUsed) {
        context_.connection->selectEvents(receiver.window, XCB_EVENT_MASK_NO_EVENT);
    }
}

/// One timer for all transfers: one for each piece would add thousands to the loop.
void X11OutgoingTransfers::watchProgress() {
    auto check = std::make_shared<WorkItem>([this] {
        const auto running = std::exchange(check_, nullptr);
        dropIdleReceivers();
    });
    queue_.asyncAfter(context_.limits.sending, check);
    check_ = std::move(check);
}

void X11OutgoingTransfers::dropIdleReceivers() {
    for (std::size_t i = transfers_.size(); i-- > 0;) {
        if (!std::exchange(transfers_[i].hasProgressed, false)) {
            end(transfers_[i].receiver);
        }
    }
    try {
        if (!transfers_.empty()) {
            watchProgress();
        }
    } catch (const std::bad_alloc&) {
        while (!transfers_.empty()) {
            end(transfers_.back().receiver);
        }
    }
}

} // namespace platform
