// For any bytes, the fast conversion of the repaired text must equal the reference byte for byte,
// and no function may read outside its text when given the raw bytes.

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
