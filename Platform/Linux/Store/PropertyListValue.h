#pragma once

#include "Platform/Linux/Store/PropertyListNode.h"
#include "Platform/UserDefaults.h"

#include <string>
#include <string_view>

namespace platform {

/// The object as a tree of libplist's, with its type and exact value. Null where memory ends and
/// for what libplist does not keep: foundation::Other, and texts and keys with zero bytes or with
/// ill-formed UTF-8. A date keeps its microseconds if it is less than 272 years away from 2001; a
/// property list's dates are doubles.
[[nodiscard]] PropertyListNode makePropertyListNode(const foundation::Value& object);

/// Whether libplist keeps the text, which can be a key then.
[[nodiscard]] bool isPropertyListText(const std::string& text);

/// What stands in the tree `node`, which stays the caller's. Integers that fit come back signed.
[[nodiscard]] foundation::Value propertyListObject(void* node);

/// The tree as a binary property list of its own: two trees are the same, to the last bit, when
/// these are. Empty where memory ends.
[[nodiscard]] std::string binaryPropertyList(void* node);

/// Reads a binary property list; null for anything else.
[[nodiscard]] PropertyListNode readBinaryPropertyList(std::string_view bytes);

} // namespace platform
