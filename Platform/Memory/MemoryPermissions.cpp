#include "Platform/Memory/MemoryPermissions.h"

#include <algorithm>
#include <string_view>

namespace platform {

namespace {

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isInScheme(char character) {
    return isLetter(character) || (character >= '0' && character <= '9') || character == '+' ||
           character == '-' || character == '.';
}

bool hasScheme(std::string_view text) {
    const auto end = text.find(':');
    if (end == std::string_view::npos || end == 0 || !isLetter(text.front())) {
        return false;
    }
    const std::string_view scheme = text.substr(0, end);
    return std::all_of(scheme.begin(), scheme.end(), isInScheme);
}

} // namespace

bool MemoryWorkspace::openURL(const std::string& url) {
    if (!hasScheme(url)) {
        return false;
    }
    urls_.push_back(url);
    return !refuses_;
}

} // namespace platform
