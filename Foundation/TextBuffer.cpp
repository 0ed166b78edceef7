#include "Foundation/TextBuffer.h"

#include "Foundation/FatalError.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace foundation {

TextBuffer::TextBuffer(std::string_view text) {
    append(text);
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
    // realloc moves the pages of a large block instead of copying what they hold.
    void* grown = std::realloc(bytes_.get(), capacity); // NOLINT(*-no-malloc)
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
}

void TextBuffer::append(std::string_view text) {
    if (!text.empty()) {
        std::memcpy(appendUninitialised(text.size()), text.data(), text.size());
    }
}

char* TextBuffer::appendUninitialised(std::size_t count) {
    if (count > capacity_ - size_) {
        if (count > std::numeric_limits<std::ptrdiff_t>::max() - size_) {
            throw std::bad_alloc();
        }
        grow(size_ + count);
    }
    char* first = bytes_.get() + size_;
    size_ += count;
    return first;
}

void TextBuffer::truncate(std::size_t size) {
    if (size > size_) {
        fatalError("TextBuffer::truncate cannot lengthen a text");
    }
    size_ = size;
}

void TextBuffer::grow(std::size_t required) {
    reserve(std::max(required, capacity_ + capacity_ / 2));
}

} // namespace foundation
