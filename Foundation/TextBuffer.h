#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace foundation {

/// A text that one owner holds and hands on: from the pasteboard through a conversion and back
/// without a copy. A std::string would do, but for large texts it fills memory with zeros before
/// the text is written and copies what it holds to grow.
///
/// Units are bytes; the encoding is UTF-8 unless the user of the buffer says otherwise. Move-only;
/// the bytes keep their address when the buffer is moved, so views into it stay valid for as long
/// as somebody holds it. A moved-from buffer is empty. Not synchronised. Running out of memory
/// throws std::bad_alloc and leaves the buffer as it was.
class TextBuffer {
  public:
    TextBuffer() = default;

    /// Copies `text`.
    explicit TextBuffer(std::string_view text);

    ~TextBuffer() = default;
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    TextBuffer(TextBuffer&& other) noexcept;
    TextBuffer& operator=(TextBuffer&& other) noexcept;

    /// Makes room for at least `capacity` bytes in all without touching the new ones.
    void reserve(std::size_t capacity);

    void append(std::string_view text);

    /// Lengthens the text by `count` bytes of unspecified value, for the caller to fill in, and
    /// returns the first of them.
    [[nodiscard]] char* appendUninitialised(std::size_t count);

    /// Shortens the text to `size` bytes, which is at most the present size.
    void truncate(std::size_t size);

    [[nodiscard]] std::size_t size() const { return size_; }

    [[nodiscard]] bool empty() const { return size_ == 0; }

    [[nodiscard]] std::string_view view() const { return {bytes_.get(), size_}; }

  private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); } // NOLINT(*-no-malloc)
    };

    void grow(std::size_t required);

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace foundation
