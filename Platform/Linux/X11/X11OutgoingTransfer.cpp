#include "Platform/Linux/X11/X11OutgoingTransfer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace platform {

X11OutgoingTransfer::X11OutgoingTransfer(const X11Connection& connection,
                                         const X11ClipboardAtoms& atoms,
                                         MainQueue& queue,
                                         Receiver receiver,
                                         std::shared_ptr<const foundation::TextBuffer> text,
                                         Limits limits,
                                         std::function<void()> givenUp)
    : connection_(connection),
      queue_(queue),
      receiver_(receiver),
      text_(std::move(text)),
      limits_(limits),
      givenUp_(std::move(givenUp)) {
    constexpr std::uint8_t bitsPerSize = 32;
    const auto size = static_cast<std::uint32_t>(
        std::min<std::size_t>(text_->size(), std::numeric_limits<std::int32_t>::max()));
    xcb_change_property(connection_.get(),
                        XCB_PROP_MODE_REPLACE,
                        receiver_.window,
                        receiver_.property,
                        atoms.incr,
                        bitsPerSize,
                        1,
                        &size);
    watchProgress();
}

X11OutgoingTransfer::~X11OutgoingTransfer() {
    check_->cancel();
}

bool X11OutgoingTransfer::sendNext() {
    constexpr std::uint8_t bitsPerByte = 8;
    if (hasEnded_) {
        return false;
    }
    const std::string_view piece = text_->view().substr(sentCount_, limits_.chunkSize);
    xcb_change_property(connection_.get(),
                        XCB_PROP_MODE_REPLACE,
                        receiver_.window,
                        receiver_.property,
                        receiver_.type,
                        bitsPerByte,
                        static_cast<std::uint32_t>(piece.size()),
                        piece.data());
    sentCount_ += piece.size();
    hasEnded_ = piece.empty();
    hasProgressed_ = true;
    return true;
}

void X11OutgoingTransfer::watchProgress() {
    // One look per limit instead of one timer per piece: the loop stays free of thousands of them.
    check_ = std::make_shared<WorkItem>([this] {
        bool goesOn = std::exchange(hasProgressed_, false);
        if (goesOn) {
            try {
                watchProgress();
            } catch (const std::bad_alloc&) {
                goesOn = false;
            }
        }
        if (!goesOn) {
            // The call may destroy this object, the function that it holds included.
            const auto givenUp = givenUp_;
            givenUp();
        }
    });
    queue_.asyncAfter(limits_.silence, check_);
}

} // namespace platform
