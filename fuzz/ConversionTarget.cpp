// Any bytes: the fast conversion must agree with the reference byte for byte on what they are
// repaired to, and no function may leave its text when it gets them as they are.

#include "fuzz/DifferentialCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    fuzz::exerciseOnRawBytes(bytes);
    if (const auto difference = fuzz::findDifference(bytes, fuzz::convertFast)) {
        std::fputs(difference->c_str(), stderr);
        std::abort();
    }
    return 0;
}
