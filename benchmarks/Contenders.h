#pragma once

#include <cstddef>
#include <string>

namespace benchmarks {

/// Each function times one implementation on `text`: the mean of `repetitions` conversions, in
/// seconds. Copying the input is not timed. Freeing the results is timed only for several
/// repetitions, which then run on warm memory.
[[nodiscard]] double timeOfConversion(const std::string& text, std::size_t repetitions);
[[nodiscard]] double timeOfReference(const std::string& text, std::size_t repetitions);
[[nodiscard]] double timeOfPcre2(const std::string& text, std::size_t repetitions);

/// The result of a conversion. Copying it is the baseline.
struct Finished {
    std::string html;
    std::string plainText;
};

[[nodiscard]] Finished finish(const std::string& text);

/// Times copying both texts, in seconds.
[[nodiscard]] double timeOfCopy(const Finished& finished, std::size_t repetitions);

/// Whether all implementations yield the same HTML and plain text.
[[nodiscard]] bool allAgree(const std::string& text);

/// Times the clipboard manager's reading, generating and writing in seconds, with debug messages
/// off and a pasteboard that copies and stores nothing.
[[nodiscard]] double timeOfManager(const std::string& text);

} // namespace benchmarks
