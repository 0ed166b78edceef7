#include "Platform/Linux/Store/PropertyListValue.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string_view>
#include <type_traits>
#include <variant>

namespace platform {

namespace {

using foundation::Date;

constexpr std::string_view magic = "bplist00";

/// What objects begin with: an integer of 8 bytes, one of 16, and a date.
constexpr char integerMarker = 0x13;
constexpr char wideIntegerMarker = 0x14;
constexpr char dateMarker = 0x33;

constexpr std::int64_t microsecondsPerSecond = 1'000'000;

/// The instant that a property list's dates count from.
constexpr std::chrono::sys_seconds referenceDate{
    std::chrono::sys_days(std::chrono::January / 1 / 2001)};

void appendBigEndian(std::string& bytes, std::uint64_t value) {
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(value >> shift)));
    }
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = value << 8U | static_cast<std::uint8_t>(byte);
    }
    return value;
}

/// A tree of one object, given as it stands in a binary property list. libplist's functions for
/// integers and dates know neither the sign of a number nor a date before 2001 or after 2069
/// exactly, but its trees, its reader and its writer do.
PropertyListNode nodeOfObject(std::string_view object) {
    std::string list(magic);
    list += object;
    const std::uint64_t offsetTable = list.size();
    list.push_back(static_cast<char>(magic.size()));
    list.append(6, '\0');
    list.append(2, '\1'); // offsets and references of one byte
    appendBigEndian(list, 1);
    appendBigEndian(list, 0);
    appendBigEndian(list, offsetTable);
    return readBinaryPropertyList(list);
}

PropertyListNode makeNode(std::int64_t number) {
    std::string object(1, integerMarker);
    appendBigEndian(object, static_cast<std::uint64_t>(number));
    return nodeOfObject(object);
}

PropertyListNode makeNode(std::uint64_t number) {
    if (number <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        return makeNode(static_cast<std::int64_t>(number));
    }
    std::string object(1, wideIntegerMarker);
    appendBigEndian(object, 0);
    appendBigEndian(object, number);
    return nodeOfObject(object);
}

PropertyListNode makeNode(bool value) {
    return PropertyListNode(plist_new_bool(value ? 1 : 0));
}

PropertyListNode makeNode(double number) {
    return PropertyListNode(plist_new_real(number));
}

std::string textOf(void* node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, length);
}

/// libplist may write something that nobody can read for a text that is not well-formed.
PropertyListNode makeNode(const std::string& text) {
    const PropertyListNode node(plist_new_string(text.c_str()));
    PropertyListNode again =
        node ? readBinaryPropertyList(binaryPropertyList(node.get())) : nullptr;
    if (again &&
        (plist_get_node_type(again.get()) != PLIST_STRING || textOf(again.get()) != text)) {
        again.reset();
    }
    return again;
}

PropertyListNode makeNode(Date date) {
    const std::int64_t microseconds = date.time_since_epoch().count();
    const std::int64_t wholeSeconds =
        microseconds / microsecondsPerSecond - referenceDate.time_since_epoch().count();
    const double seconds = static_cast<double>(wholeSeconds) +
                           static_cast<double>(microseconds % microsecondsPerSecond) /
                               static_cast<double>(microsecondsPerSecond);
    std::string object(1, dateMarker);
    appendBigEndian(object, std::bit_cast<std::uint64_t>(seconds));
    return nodeOfObject(object);
}

PropertyListNode makeNode(const foundation::Dictionary& dictionary) {
    PropertyListNode node(plist_new_dict());
    for (const auto& [key, value] : dictionary) {
        PropertyListNode item = makePropertyListNode(value);
        if (!node || !item || !isPropertyListText(key)) {
            return nullptr;
        }
        plist_dict_set_item(node.get(), key.c_str(), item.release());
    }
    return node;
}

PropertyListNode makeNode(foundation::Other /*object*/) {
    return nullptr;
}

foundation::Value integerOf(void* node) {
    const std::string list = binaryPropertyList(node);
    if (list.size() <= magic.size()) {
        return foundation::Other{};
    }
    const std::string_view object = std::string_view(list).substr(magic.size());
    const std::size_t size = std::size_t{1} << (static_cast<std::uint8_t>(object[0]) & 0x0FU);
    const std::uint64_t value = bigEndian(object.substr(1, size));
    // Only integers of 16 bytes are unsigned when their highest bit is set; the higher half of one
    // is always zero in libplist's trees.
    if (size > sizeof value &&
        value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        return value;
    }
    return static_cast<std::int64_t>(value);
}

foundation::Value dateOf(void* node) {
    const std::string list = binaryPropertyList(node);
    if (list.size() < magic.size() + 1 + sizeof(double)) {
        return foundation::Other{};
    }
    const auto seconds = std::bit_cast<double>(
        bigEndian(std::string_view(list).substr(magic.size() + 1, sizeof(double))));
    // What microseconds in 64 bits can tell. Written so that NaN fails it.
    constexpr double limit = 9.2e12;
    if (!(seconds > -limit && seconds < limit)) {
        return foundation::Other{};
    }
    const double wholeSeconds = std::floor(seconds);
    const double rest = (seconds - wholeSeconds) * static_cast<double>(microsecondsPerSecond);
    return referenceDate + std::chrono::seconds(static_cast<std::int64_t>(wholeSeconds)) +
           std::chrono::microseconds(std::llround(rest));
}

foundation::Value scalarOf(void* node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING:
        return textOf(node);
    case PLIST_DATE:
        return dateOf(node);
    default:
        return foundation::Other{};
    }
}

foundation::Dictionary dictionaryOf(void* node) {
    foundation::Dictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        const std::unique_ptr<char, decltype(&std::free)> ownedKey(key, &std::free);
        if (key == nullptr || item == nullptr) {
            break;
        }
        dictionary.insert_or_assign(key, propertyListObject(item));
    }
    std::free(iterator);
    return dictionary;
}

} // namespace

PropertyListNode makePropertyListNode(const foundation::Value& object) {
    return std::visit([](const auto& held) { return makeNode(held); }, object);
}

bool isPropertyListText(const std::string& text) {
    return makeNode(text) != nullptr;
}

foundation::Value propertyListObject(void* node) {
    if (plist_get_node_type(node) == PLIST_DICT) {
        return dictionaryOf(node);
    }
    return scalarOf(node);
}

std::string binaryPropertyList(void* node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    if (bytes == nullptr) {
        return {};
    }
    const std::unique_ptr<char, decltype(&plist_to_bin_free)> owned(bytes, &plist_to_bin_free);
    return {bytes, length};
}

PropertyListNode readBinaryPropertyList(std::string_view bytes) {
    plist_t node = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return PropertyListNode(node);
}

} // namespace platform
