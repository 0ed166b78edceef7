#include "Foundation/Uuid.h"

#include <random>

namespace foundation {

Uuid Uuid::random() {
    std::random_device source;
    std::uniform_int_distribution<unsigned> anyByte(0, 0xFF);
    Uuid uuid;
    for (std::uint8_t& byte : uuid.bytes) {
        byte = static_cast<std::uint8_t>(anyByte(source));
    }
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

} // namespace foundation
