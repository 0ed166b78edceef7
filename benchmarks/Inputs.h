#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {

struct Input {
    char letter;
    std::string_view description;
    std::string text;
    std::size_t lineCount;
};

/// The inputs a to h whose letters are in `letters`, the same bytes on every machine.
[[nodiscard]] std::vector<Input> makeInputs(std::string_view letters);

/// Lines of 20 to 40 characters in sections of up to twelve. Each section has one kind of bullet,
/// numbers, or neither. Some lines end in white space.
[[nodiscard]] std::string shortLines(std::size_t count);

} // namespace benchmarks
