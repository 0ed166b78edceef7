#include "benchmarks/Inputs.h"

#include <array>
#include <random>
#include <span>

namespace benchmarks {

namespace {

/// Uses raw engine output: distributions differ between standard libraries.
class Random {
  public:
    std::size_t below(std::size_t bound) { return engine_() % bound; }

    std::string_view oneOf(std::span<const std::string_view> choices) {
        return choices[below(choices.size())];
    }

  private:
    std::mt19937_64 engine_{20240105}; // NOLINT(*-msc51-cpp): the same inputs on every run
};

constexpr auto latinWords = std::to_array<std::string_view>(
    {"Buy",   "milk",  "call",   "the",   "plumber", "review",  "draft", "of",
     "a",     "plan",  "before", "lunch", "send",    "invoice", "to",    "some",
     "ideas", "later", "and",    "book",  "two",     "seats"});

constexpr auto markupWords =
    std::to_array<std::string_view>({"R&D", "don't", "\"fine\"", "<3", "->"});

constexpr auto otherWords = std::to_array<std::string_view>({"\u03B1\u03B3\u03BF\u03C1\u03AC",
                                                             "\u03B3\u03AC\u03BB\u03B1",
                                                             "\u725B\u4E73\u3092",
                                                             "\u8CB7\u3046",
                                                             "\u4F1A\u8B70",
                                                             "\U0001F600",
                                                             "\U0001F4DD",
                                                             "\u0441\u043F\u0438\u0441\u043E\u043A",
                                                             "\u00FCber",
                                                             "\u0645\u0647\u0645\u0629"});

constexpr auto latinPrefixes = std::to_array<std::string_view>(
    {"- ", "* ", "\u2022 ", "+ ", "1. ", "12. ", "3 - ", "7: ", "", "", "  ", "\t"});

constexpr auto otherPrefixes = std::to_array<std::string_view>({"\u2022 ",
                                                                "\u2192 ",
                                                                "\u2023\u00A0",
                                                                "\u0661. ",
                                                                "\u0967\u0968 \u2013 ",
                                                                "\uFF11: ",
                                                                "",
                                                                "\u3000"});

std::string sentence(Random& random,
                     std::string_view prefix,
                     std::span<const std::string_view> words,
                     std::size_t size) {
    std::string line(prefix);
    while (line.size() < size) {
        // Rare, about once in 1000 bytes: another input consists of these characters.
        line += random.below(160) == 0 ? random.oneOf(markupWords) : random.oneOf(words);
        line += ' ';
    }
    if (random.below(8) != 0) {
        line.pop_back();
    }
    return line;
}

std::string lines(std::size_t count,
                  std::span<const std::string_view> prefixes,
                  std::span<const std::string_view> words,
                  std::size_t shortest,
                  std::size_t longest) {
    Random random;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        // The kind of each line is random, to defeat branch prediction.
        const std::string_view prefix = random.oneOf(prefixes);
        text += i == 0 ? "" : "\n";
        text += sentence(random, prefix, words, shortest + random.below(longest - shortest + 1));
    }
    return text;
}

std::string markupLines(std::size_t count) {
    Random random;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += i == 0 ? "" : "\n";
        for (int j = 0; j < 40; ++j) {
            text += "&<>\"'abcde"[random.below(10)];
        }
    }
    return text;
}

} // namespace

std::string shortLines(std::size_t count) {
    return lines(count, latinPrefixes, latinWords, 20, 36);
}

std::vector<Input> makeInputs(std::string_view letters) {
    std::vector<Input> inputs;
    const auto add =
        [&inputs,
         letters](char letter, std::string_view description, std::size_t lineCount, auto make) {
            if (letters.find(letter) != std::string_view::npos) {
                inputs.push_back({letter, description, make(), lineCount});
            }
        };
    add('a', "8 lines", 8, [] { return shortLines(8); });
    add('b', "100 lines", 100, [] { return shortLines(100); });
    add('c', "100,000 short lines", 100'000, [] { return shortLines(100'000); });
    add('d', "1,000,000 short lines", 1'000'000, [] { return shortLines(1'000'000); });
    add('e', "10,000 lines of 2 KB", 10'000, [] {
        return lines(10'000, latinPrefixes, latinWords, 2048, 2048);
    });
    add('f', "100,000 lines beyond ASCII", 100'000, [] {
        return lines(100'000, otherPrefixes, otherWords, 40, 80);
    });
    add('g', "100,000 lines full of markup", 100'000, [] { return markupLines(100'000); });
    add('h', "one line of 64 MB", 1, [] {
        return lines(1, latinPrefixes, latinWords, std::size_t{64} << 20U, std::size_t{64} << 20U);
    });
    return inputs;
}

} // namespace benchmarks
