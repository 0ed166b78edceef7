#pragma once

#include <cstddef>
#include <string>

namespace benchmarks {

/// Each function times one way of converting `text`, in seconds per conversion, the mean of
/// `repetitions` of them. Copying the text beforehand does not count. Giving the results back to
/// the allocator counts only when there are several repetitions, which then find its memory warm.
[[nodiscard]] double timeOfConversion(const std::string& text, std::size_t repetitions);
[[nodiscard]] double timeOfReference(const std::string& text, std::size_t repetitions);
[[nodiscard]] double timeOfPcre2(const std::string& text, std::size_t repetitions);

/// The two texts of a finished conversion, to be copied as the yardstick.
struct Finished {
    std::string html;
    std::string plainText;
};

[[nodiscard]] Finished finish(const std::string& text);

/// How long it takes to copy both texts into memory of their own.
[[nodiscard]] double timeOfCopy(const Finished& finished, std::size_t repetitions);

/// Whether all ways of converting lead to the same html and plain text.
[[nodiscard]] bool allAgree(const std::string& text);

/// How long reading, generating and writing take through the clipboard manager while debug messages
/// are off, on a pasteboard that neither copies nor keeps anything.
[[nodiscard]] double timeOfManager(const std::string& text);

} // namespace benchmarks
