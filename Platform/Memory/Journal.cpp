#include "Platform/Memory/Journal.h"

#include <algorithm>
#include <iterator>

namespace platform {

std::vector<std::string> Journal::only(std::initializer_list<std::string_view> calls) const {
    std::vector<std::string> made;
    std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(made), [&](const auto& call) {
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    });
    return made;
}

} // namespace platform
