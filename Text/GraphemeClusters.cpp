#include "Text/GraphemeClusters.h"

#include "Foundation/Utf8.h"

#include <utf8proc.h>

namespace text {

using foundation::DecodedCharacter;
using foundation::decodeFirst;

std::int64_t countGraphemeClusters(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    std::int64_t count = 1;
    utf8proc_int32_t state = 0;
    DecodedCharacter previous = decodeFirst(text);
    text.remove_prefix(previous.length);
    while (!text.empty()) {
        const DecodedCharacter next = decodeFirst(text);
        text.remove_prefix(next.length);
        if (utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(previous.codePoint),
                                             static_cast<utf8proc_int32_t>(next.codePoint),
                                             &state)) {
            ++count;
        }
        previous = next;
    }
    return count;
}

} // namespace text
