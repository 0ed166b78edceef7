#include "Platform/Linux/Store/PropertyList.h"

#include "Platform/Linux/Store/PropertyListBounds.h"
#include "Platform/Linux/Store/PropertyListValue.h"

#include <cstdint>
#include <utility>

namespace platform {

namespace {

PropertyListNode readXml(std::string_view bytes) {
    plist_t node = nullptr;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return PropertyListNode(node);
}

bool isBinary(std::string_view bytes) {
    return plist_is_binary(bytes.data(), static_cast<std::uint32_t>(bytes.size())) != 0;
}

bool isDictionary(const PropertyListNode& node) {
    return node && plist_get_node_type(node.get()) == PLIST_DICT;
}

/// The tree as a binary property list that can be read; none when it cannot be.
std::optional<std::string> readableBytes(const PropertyListNode& root) {
    std::string bytes = binaryPropertyList(root.get());
    const bool isReadable =
        isWithinPropertyListBounds(bytes) && isDictionary(readBinaryPropertyList(bytes));
    return isReadable ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace

PropertyList::PropertyList() : root_(plist_new_dict()) {}

PropertyList::PropertyList(PropertyListNode root) : root_(std::move(root)) {}

std::optional<PropertyList> PropertyList::parse(std::string_view bytes) {
    if (!isWithinPropertyListBounds(bytes)) {
        return std::nullopt;
    }
    const PropertyListNode root = isBinary(bytes) ? readBinaryPropertyList(bytes) : readXml(bytes);
    // From a broken list libplist may make trees that it writes wrongly, or that end the program
    // when a key is asked for. What it has written and read again is sound.
    const auto sound = isDictionary(root) ? readableBytes(root) : std::nullopt;
    return sound ? std::optional(PropertyList(readBinaryPropertyList(*sound))) : std::nullopt;
}

std::optional<std::string> PropertyList::serialize() const {
    return readableBytes(root_);
}

std::optional<foundation::Value> PropertyList::object(std::string_view key) const {
    plist_t node = plist_dict_get_item(root_.get(), std::string(key).c_str());
    return node != nullptr ? std::optional(propertyListObject(node)) : std::nullopt;
}

bool PropertyList::setObject(std::string_view key, const foundation::Value& object) {
    PropertyListNode node = makePropertyListNode(object);
    if (!node) {
        return false;
    }
    const std::string ownKey(key);
    if (!isPropertyListText(ownKey)) {
        return false;
    }
    plist_t present = plist_dict_get_item(root_.get(), ownKey.c_str());
    if (present != nullptr && binaryPropertyList(present) == binaryPropertyList(node.get())) {
        return false;
    }
    plist_dict_set_item(root_.get(), ownKey.c_str(), node.release());
    return true;
}

bool PropertyList::removeObject(std::string_view key) {
    const std::string ownKey(key);
    if (plist_dict_get_item(root_.get(), ownKey.c_str()) == nullptr) {
        return false;
    }
    plist_dict_remove_item(root_.get(), ownKey.c_str());
    return true;
}

} // namespace platform
