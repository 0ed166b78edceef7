#include "Platform/Linux/Store/PropertyList.h"

#include <QDateTime>
#include <QStringDecoder>
#include <QTimeZone>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <variant>

namespace platform {

namespace {

using foundation::Date;

constexpr const char* header =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
)";
constexpr const char* footer = "</dict>\n</plist>\n";

/// Unlike QString::fromUtf8(), keeps a byte order mark and reports ill-formed text.
std::optional<QString> decodeUtf8(std::string_view text) {
    using Flag = QStringDecoder::Flag;
    QStringDecoder decode(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const QString decoded = decode(QByteArrayView(text.data(), std::ssize(text)));
    return decode.hasError() ? std::nullopt : std::optional(decoded);
}

/// Empty for a text that XML cannot represent. It can represent carriage returns, but reads them as
/// line feeds.
QString textElement(const QString& name, std::string_view text) {
    const auto decoded = decodeUtf8(text);
    if (!decoded || decoded->contains(u'\r')) {
        return {};
    }
    QString element;
    QXmlStreamWriter xml(&element);
    xml.writeTextElement(name, *decoded);
    return xml.hasError() ? QString() : element;
}

/// The length of 2024-03-07T10:00:00, which six digits of a second's fraction follow.
constexpr int lengthToTheSecond = 19;

QString dateElement(Date date) {
    const auto second = std::chrono::floor<std::chrono::seconds>(date);
    const QString text =
        QDateTime::fromSecsSinceEpoch(second.time_since_epoch().count(), QTimeZone::utc())
            .toString(Qt::ISODate)
            .left(lengthToTheSecond);
    if (text.isEmpty()) {
        return {};
    }
    const QString fraction = QString::number((date - second).count()).rightJustified(6, u'0');
    return "<date>" + text + u'.' + fraction + "Z</date>";
}

template <typename Held>
QString elementOf(const Held& value) {
    if constexpr (std::is_same_v<Held, bool>) {
        return value ? "<true/>" : "<false/>";
    } else if constexpr (std::is_arithmetic_v<Held>) {
        std::array<char, 32> digits{};
        const auto result = std::to_chars(digits.begin(), digits.end(), value);
        return textElement(std::is_integral_v<Held> ? "integer" : "real",
                           std::string_view(digits.begin(), result.ptr));
    } else if constexpr (std::is_same_v<Held, std::string>) {
        return textElement("string", value);
    } else if constexpr (std::is_same_v<Held, Date>) {
        return dateElement(value);
    } else if constexpr (std::is_same_v<Held, foundation::Dictionary>) {
        QString items;
        for (const auto& [key, item] : value) {
            const QString keyElement = textElement("key", key);
            const QString element = propertyListElement(item);
            if (keyElement.isEmpty() || element.isEmpty()) {
                return {};
            }
            items += keyElement + element;
        }
        return "<dict>" + items + "</dict>";
    } else {
        static_assert(std::is_same_v<Held, foundation::Other>);
        return {};
    }
}

/// Reads the dictionary whose start tag was just read. `readItem` is called at the start tag of
/// each value, with its key and an offset between the key and the value. The reader has an error
/// afterwards if keys and values do not take turns.
template <typename ReadItem>
void readDictionary(QXmlStreamReader& reader, const ReadItem& readItem) {
    while (reader.readNextStartElement()) {
        const bool isKey = reader.name() == u"key";
        std::string key = reader.readElementText().toStdString();
        const qint64 begin = reader.characterOffset();
        if (!isKey || !reader.readNextStartElement()) {
            reader.raiseError();
            return;
        }
        readItem(std::move(key), begin);
    }
}

template <typename Number>
std::optional<Number> numberOf(const std::string& text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<Date> dateOf(const QString& text) {
    const auto second = QDateTime::fromString(text.left(lengthToTheSecond) + u'Z', Qt::ISODate);
    const Date date{std::chrono::seconds(second.toSecsSinceEpoch())};
    const std::chrono::microseconds fraction(text.mid(lengthToTheSecond + 1, 6).toInt());
    return second.isValid() ? std::optional(date + fraction) : std::nullopt;
}

/// The value of the element whose start tag was just read.
foundation::Value readValue(QXmlStreamReader& reader, int depth = 0) {
    constexpr int maxDepth = 100;
    const QString type = reader.name().toString();
    if (type == "dict" && depth < maxDepth) {
        foundation::Dictionary dictionary;
        readDictionary(reader, [&](std::string key, qint64 /*begin*/) {
            dictionary.insert_or_assign(std::move(key), readValue(reader, depth + 1));
        });
        return dictionary;
    }
    const QString text = reader.readElementText(QXmlStreamReader::SkipChildElements);
    const std::string utf8 = text.toStdString();
    if (type == "true" || type == "false") {
        return type == "true";
    }
    if (type == "string") {
        return utf8;
    }
    if (const auto number = numberOf<std::int64_t>(utf8); number && type == "integer") {
        return *number;
    }
    if (const auto number = numberOf<std::uint64_t>(utf8); number && type == "integer") {
        return *number;
    }
    if (const auto number = numberOf<double>(utf8); number && type == "real") {
        return *number;
    }
    if (const auto date = dateOf(text); date && type == "date") {
        return *date;
    }
    return foundation::Other{};
}

} // namespace

std::optional<PropertyList> parsePropertyList(const QByteArray& bytes) {
    const auto xml = decodeUtf8({bytes.data(), static_cast<std::size_t>(bytes.size())});
    QXmlStreamReader reader(xml.value_or(QString()));
    for (const QStringView name : {u"plist", u"dict"}) {
        if (!reader.readNextStartElement() || reader.name() != name) {
            return std::nullopt;
        }
    }
    PropertyList list;
    readDictionary(reader, [&](std::string key, qint64 begin) {
        reader.skipCurrentElement();
        const QString element = xml->mid(begin, reader.characterOffset() - begin).trimmed();
        list.insert_or_assign(std::move(key), element);
    });
    const bool hasSecondRoot = reader.readNextStartElement();
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return hasSecondRoot || reader.hasError() ? std::nullopt : std::optional(std::move(list));
}

QByteArray serializePropertyList(const PropertyList& list) {
    QString xml = header;
    for (const auto& [key, element] : list) {
        xml += textElement("key", key) + element + u'\n';
    }
    return (xml + footer).toUtf8();
}

QString propertyListElement(const foundation::Value& value) {
    return std::visit([](const auto& held) { return elementOf(held); }, value);
}

foundation::Value propertyListValue(const QString& element) {
    QXmlStreamReader reader(element);
    reader.readNextStartElement();
    auto value = readValue(reader);
    return reader.hasError() ? foundation::Other{} : std::move(value);
}

} // namespace platform
