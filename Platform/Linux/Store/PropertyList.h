#pragma once

#include "Platform/Linux/Store/PropertyListNode.h"
#include "Platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A property list whose root is a dictionary. What is not changed here keeps its type and value,
/// also where this program has no use for either. Keys and texts are well-formed UTF-8 without zero
/// bytes: others cannot be stored.
class PropertyList {
  public:
    /// An empty dictionary.
    PropertyList();

    /// Reads a binary or XML property list; none for anything else, for what goes beyond
    /// PropertyListBounds, and for what could not be written again.
    [[nodiscard]] static std::optional<PropertyList> parse(std::string_view bytes);

    /// The whole as a binary property list. None when it goes beyond PropertyListBounds, so that
    /// parse() takes whatever this has given, or where memory ends.
    [[nodiscard]] std::optional<std::string> serialize() const;

    [[nodiscard]] std::optional<foundation::Value> object(std::string_view key) const;

    /// Returns whether that changed anything: what cannot be stored never does, foundation::Other
    /// included, since only what was there before knows what it is.
    bool setObject(std::string_view key, const foundation::Value& object);
    bool removeObject(std::string_view key);

  private:
    explicit PropertyList(PropertyListNode root);

    PropertyListNode root_;
};

} // namespace platform
