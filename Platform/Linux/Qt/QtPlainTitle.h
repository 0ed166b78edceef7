#pragma once

#include <QString>
#include <string>

namespace platform {

/// A UTF-8 text as the title of something to press, shown as it is: Qt takes a lone & for the mark
/// of a shortcut.
[[nodiscard]] inline QString plainTitle(const std::string& title) {
    return QString::fromStdString(title).replace(u'&', QStringLiteral("&&"));
}

} // namespace platform
