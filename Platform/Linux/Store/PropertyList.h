#pragma once

#include "Foundation/Value.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace platform {

/// The dictionary at the root of an XML property list. Values are kept as XML elements, so that
/// those of types that the program does not use survive a rewrite.
using PropertyList = std::map<std::string, QString, std::less<>>;

/// nullopt unless the bytes, from first to last, are a property list in UTF-8 with a dictionary.
[[nodiscard]] std::optional<PropertyList> parsePropertyList(const QByteArray& bytes);

[[nodiscard]] QByteArray serializePropertyList(const PropertyList& list);

/// The XML element of a value. Empty for what cannot be stored: foundation::Other, dates outside
/// the years 1 to 9999, strings of ill-formed UTF-8 or with control characters other than tab and
/// line feed, and dictionaries with any of them. Dates have a fraction of six digits, an extension
/// of the format.
[[nodiscard]] QString propertyListElement(const foundation::Value& value);

/// The value of an XML element.
[[nodiscard]] foundation::Value propertyListValue(const QString& element);

} // namespace platform
