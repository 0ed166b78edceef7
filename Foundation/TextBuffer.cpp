#include "Foundation/TextBuffer.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace foundation {

namespace {

TextBuffer::LargeBlockHook largeBlockHook = nullptr;

} // namespace

void TextBuffer::setLargeBlockHook(LargeBlockHook hook) {
    largeBlockHook = hook;
}

TextBuffer::TextBuffer(TextBuffer&& other) noexcept
    : bytes_(std::move(other.bytes_)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

TextBuffer& TextBuffer::operator=(TextBuffer&& other) noexcept {
    bytes_ = std::move(other.bytes_);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
}

void TextBuffer::reserve(std::size_t capacity) {
    if (capacity <= capacity_) {
        return;
    }
    void* grown = std::realloc(bytes_.get(), capacity); // NOLINT(*-no-malloc)
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
    if (largeBlockHook != nullptr && capacity >= largeBlockSize) {
        largeBlockHook(bytes_.get(), capacity);
    }
}

void TextBuffer::growBy(std::size_t count) {
    if (count > std::numeric_limits<std::ptrdiff_t>::max() - size_) {
        throw std::bad_alloc();
    }
    reserve(std::max(size_ + count, capacity_ + capacity_ / 2));
}

} // namespace foundation
