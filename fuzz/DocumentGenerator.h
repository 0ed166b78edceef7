#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace fuzz {

/// Generates texts from what the conversion distinguishes: bullets, numbers in several scripts,
/// punctuation, all kinds of white space, markup, line breaks and occasional invalid UTF-8. The
/// same seed yields the same texts on every machine.
class DocumentGenerator {
  public:
    explicit DocumentGenerator(std::uint64_t seed) : random_(seed) {}

    [[nodiscard]] std::string next();

  private:
    /// A number below `bound`.
    std::size_t below(std::size_t bound) { return random_() % bound; }

    bool oneIn(std::size_t chances) { return below(chances) == 0; }

    std::string_view oneOf(std::span<const std::string_view> choices) {
        return choices[below(choices.size())];
    }

    std::string run(std::span<const std::string_view> choices, std::size_t longest);
    std::string line();

    std::mt19937_64 random_;
};

} // namespace fuzz
