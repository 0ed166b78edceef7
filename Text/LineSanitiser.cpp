#include "Text/LineSanitiser.h"

#include "Text/CharacterClasses.h"
#include "Text/Trim.h"
#include "Text/Utf8.h"

namespace text {

namespace {

struct NumericPrefix {
    std::size_t pattern;
    std::string_view rest;
};

bool isBullet(char32_t character) {
    switch (character) {
    case U'•':
    case U'-':
    case U'*':
    case U'·':
    case U'+':
    case U'→':
    case U'⁃':
    case U'‣':
    case U'⁌':
    case U'⁍':
        return true;
    default:
        return false;
    }
}

std::string_view skipDigits(std::string_view line) {
    while (!line.empty()) {
        const DecodedCharacter first = decodeFirst(line);
        if (!isDecimalDigit(first.codePoint)) {
            break;
        }
        line.remove_prefix(first.length);
    }
    return line;
}

/// The index of the pattern that the mark behind a number belongs to. Only a dash may stand apart
/// from the number.
std::optional<std::size_t> patternOfMark(char32_t mark, bool standsApart) {
    switch (mark) {
    case U'.':
        return standsApart ? std::nullopt : std::optional<std::size_t>(0);
    case U'-':
    case U'–':
    case U'—':
        return 1;
    case U':':
        return standsApart ? std::nullopt : std::optional<std::size_t>(2);
    default:
        return std::nullopt;
    }
}

/// Digits, white space and marks have no character in common, so each run ends in one place only
/// and at most one of the patterns can match.
std::optional<NumericPrefix> matchNumericPrefix(std::string_view line) {
    const std::string_view behindDigits = skipDigits(line);
    if (behindDigits.size() == line.size()) {
        return std::nullopt;
    }
    const std::string_view fromMark = trimStart(behindDigits);
    if (fromMark.empty()) {
        return std::nullopt;
    }
    const DecodedCharacter mark = decodeFirst(fromMark);
    const auto pattern = patternOfMark(mark.codePoint, fromMark.size() != behindDigits.size());
    if (!pattern) {
        return std::nullopt;
    }
    const std::string_view behindMark = fromMark.substr(mark.length);
    const std::string_view rest = trimStart(behindMark);
    if (rest.size() == behindMark.size()) {
        return std::nullopt;
    }
    return NumericPrefix{.pattern = *pattern, .rest = rest};
}

} // namespace

SanitizedLine sanitizeLine(std::string_view line) {
    SanitizedLine result{.text = line};
    if (line.empty()) {
        return result;
    }
    const DecodedCharacter first = decodeFirst(line);
    if (isBullet(first.codePoint)) {
        result.hadBullet = true;
        result.text = trim(line.substr(first.length));
    }
    if (const auto number = matchNumericPrefix(result.text)) {
        result.numericPattern = number->pattern;
        result.text = trim(number->rest);
    }
    return result;
}

} // namespace text
