#pragma once

#include "Foundation/FatalError.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace foundation {

/// A text that is handed from owner to owner without a copy: from the pasteboard through a
/// conversion and back. Unlike a std::string it does not zero memory before the text is written,
/// and it grows without copying where the system can move pages.
///
/// Units are bytes; the encoding is UTF-8 unless the user of the buffer says otherwise. Move-only;
/// views into it stay valid when it is moved. A moved-from buffer is empty. Not synchronised.
/// Running out of memory throws std::bad_alloc and leaves the buffer unchanged.
class TextBuffer {
  public:
    /// Called with each new block of at least largeBlockSize bytes.
    using LargeBlockHook = void (*)(char* block, std::size_t size);
    static constexpr std::size_t largeBlockSize = std::size_t{16} << 20U;

    /// Lets a platform prepare large blocks before they are written to, for example ask for huge
    /// pages. For all buffers from now on; call it while there is one thread.
    static void setLargeBlockHook(LargeBlockHook hook);

    TextBuffer() = default;

    /// Copies `text`.
    explicit TextBuffer(std::string_view text) { append(text); }

    ~TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    TextBuffer(TextBuffer&& other) noexcept;
    TextBuffer& operator=(TextBuffer&& other) noexcept;

    /// Ensures a capacity of at least `capacity` bytes.
    void reserve(std::size_t capacity);

    void append(std::string_view text) {
        if (!text.empty()) {
            std::memcpy(appendUninitialised(text.size()), text.data(), text.size());
        }
    }

    /// Extends the text by `count` bytes of unspecified value, which the caller fills in, and
    /// returns the first of them.
    [[nodiscard]] char* appendUninitialised(std::size_t count) {
        if (bytes_ == nullptr || count > capacity_ - size_) {
            growBy(count);
        }
        size_ += count;
        return bytes_.get() + size_ - count;
    }

    /// Shortens the text to `size` bytes, which is at most its size.
    void truncate(std::size_t size) {
        if (size > size_) {
            fatalError("TextBuffer::truncate cannot lengthen a text");
        }
        size_ = size;
    }

    [[nodiscard]] std::size_t size() const { return size_; }

    [[nodiscard]] bool empty() const { return size_ == 0; }

    [[nodiscard]] std::string_view view() const { return {bytes_.get(), size_}; }

  private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); } // NOLINT(*-no-malloc)
    };

    void growBy(std::size_t count);

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace foundation
