#include "Text/LineSanitiser.h"

#include "Foundation/Unicode.h"
#include "Text/CharacterClasses.h"

#include <cstdint>

namespace text {

namespace {

using foundation::DecodedCharacter;
using foundation::decodeFirst;

/// The kinds of character that the patterns distinguish. A dash is one that is no bullet.
enum class Kind : std::uint8_t { other, whiteSpace, hyphen, bullet, digit, fullStop, colon, dash };

/// What has been read of a line's prefixes so far. At `end` the text of the item begins, or a
/// number turns out to be none.
enum class State : std::uint8_t { start, bullet, digits, spacedDigits, mark, number, end };

/// The next state for each state but `end` and each kind of character.
constexpr auto nextStates = [] {
    using enum State;
    using Row = std::array<State, 8>;
    return std::array<Row, 6>{
        // other, white space, hyphen, bullet, digit, full stop, colon, dash
        Row{end, start, bullet, bullet, digits, end, end, end},      // start
        Row{end, bullet, end, end, digits, end, end, end},           // bullet
        Row{end, spacedDigits, mark, end, digits, mark, mark, mark}, // digits
        Row{end, spacedDigits, mark, end, end, end, end, mark},      // spacedDigits
        Row{end, number, end, end, end, end, end, end},              // mark
        Row{end, number, end, end, end, end, end, end},              // number
    };
}();

State nextState(State state, Kind kind) {
    return nextStates[static_cast<std::size_t>(state)][static_cast<std::size_t>(kind)];
}

constexpr Kind kindOf(char32_t character) {
    switch (character) {
    case U'-':
        return Kind::hyphen;
    case U'•':
    case U'*':
    case U'·':
    case U'+':
    case U'→':
    case U'⁃':
    case U'‣':
    case U'⁌':
    case U'⁍':
        return Kind::bullet;
    case U'.':
        return Kind::fullStop;
    case U':':
        return Kind::colon;
    case U'–':
    case U'—':
        return Kind::dash;
    default:
        return isWhiteSpace(character)     ? Kind::whiteSpace
               : isDecimalDigit(character) ? Kind::digit
                                           : Kind::other;
    }
}

constexpr auto asciiKinds = [] {
    std::array<Kind, 0x80> kinds{};
    for (char32_t character = 0; character < kinds.size(); ++character) {
        kinds[character] = kindOf(character);
    }
    return kinds;
}();

/// Nearly every line begins and ends in one of these.
bool isGraphicAscii(char byte) {
    return byte > ' ' && byte < '\x7F';
}

std::string_view trimStart(std::string_view text) {
    while (!text.empty() && !isGraphicAscii(text.front())) {
        const DecodedCharacter first = decodeFirst(text);
        if (!isWhiteSpace(first.codePoint)) {
            break;
        }
        text.remove_prefix(first.length);
    }
    return text;
}

std::string_view trimEnd(std::string_view text) {
    const auto isContinuation = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    while (!text.empty() && !isGraphicAscii(text.back())) {
        std::size_t length = 1;
        while (length < 4 && length < text.size() && isContinuation(text[text.size() - length])) {
            ++length;
        }
        const DecodedCharacter last = decodeFirst(text.substr(text.size() - length));
        if (last.length != length || !isWhiteSpace(last.codePoint)) {
            break;
        }
        text.remove_suffix(length);
    }
    return text;
}

} // namespace

std::string_view trim(std::string_view text) {
    return trimEnd(trimStart(text));
}

SanitizedLine sanitizeLine(std::string_view line) {
    std::string_view rest = trimEnd(line);
    SanitizedLine result{.text = rest};
    State state = State::start;
    Kind mark = Kind::other;
    while (!rest.empty()) {
        Kind kind = Kind::other;
        std::size_t length = 1;
        if (const auto byte = static_cast<unsigned char>(rest.front()); byte < asciiKinds.size()) {
            kind = asciiKinds[byte];
        } else {
            const DecodedCharacter first = decodeFirst(rest);
            kind = kindOf(first.codePoint);
            length = first.length;
        }
        const State next = nextState(state, kind);
        if (next == State::end) {
            break;
        }
        state = next;
        rest.remove_prefix(length);
        mark = state == State::mark ? kind : mark;
        result.hadBullet |= state == State::bullet;
        result.text = state <= State::bullet ? rest : result.text;
    }
    if (state == State::number) {
        result.numericPattern = mark == Kind::fullStop ? 0 : mark == Kind::colon ? 2 : 1;
        result.text = rest;
    }
    return result;
}

} // namespace text
