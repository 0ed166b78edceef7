#include "Text/Utf8Repair.h"

#include "Text/Utf8.h"

#include <cstddef>
#include <string_view>

namespace text {

namespace {

constexpr std::string_view encodedReplacement = "\xEF\xBF\xBD";

} // namespace

foundation::TextBuffer repairUtf8(foundation::TextBuffer text) {
    std::string_view rest = text.view();
    std::size_t wellFormed = wellFormedPrefixLength(rest);
    if (wellFormed == rest.size()) {
        return text;
    }
    foundation::TextBuffer repaired;
    repaired.reserve(rest.size());
    while (wellFormed < rest.size()) {
        repaired.append(rest.substr(0, wellFormed));
        repaired.append(encodedReplacement);
        rest.remove_prefix(wellFormed);
        rest.remove_prefix(decodeFirst(rest).length);
        wellFormed = wellFormedPrefixLength(rest);
    }
    repaired.append(rest);
    return repaired;
}

} // namespace text
