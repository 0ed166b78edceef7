#pragma once

#include "Foundation/LogSink.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace foundation {

enum class LogPrivacy : std::uint8_t { isPublic, isPrivate };

/// What a placeholder prints.
enum class LogConversion : std::uint8_t {
    signedInteger,
    unsignedInteger,
    floatingPoint,
    boolean,
    text
};

/// One placeholder of a log format: '%', options in braces, a length, a conversion.
///
/// Conversions are d and u with any of the lengths none, l and ll, f, and s. The options are
/// public, private and bool, separated by commas, so "%{bool,public}d" prints true or false.
/// Without an option a number is public and a text private.
struct LogPlaceholder {
    std::size_t begin = 0; ///< Offset of the percent sign.
    std::size_t end = 0;   ///< Offset just after the conversion.
    LogConversion conversion = LogConversion::text;
    LogPrivacy privacy = LogPrivacy::isPrivate;
};

/// The first placeholder of `format` at or after `from`; none if there is none. A percent sign that
/// starts no placeholder throws, which at a call site is a compile-time error.
constexpr std::optional<LogPlaceholder> nextLogPlaceholder(std::string_view format,
                                                           std::size_t from) {
    const std::size_t begin = format.find('%', from);
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    LogPlaceholder placeholder{.begin = begin};
    std::optional<LogPrivacy> privacy;
    bool isBoolean = false;
    std::size_t at = begin + 1;
    if (at < format.size() && format[at] == '{') {
        const std::size_t close = format.find('}', at);
        if (close == std::string_view::npos) {
            throw "a log format's options do not end";
        }
        std::string_view options = format.substr(at + 1, close - at - 1);
        while (!options.empty()) {
            const std::string_view option = options.substr(0, options.find(','));
            if (option == "public") {
                privacy = LogPrivacy::isPublic;
            } else if (option == "private") {
                privacy = LogPrivacy::isPrivate;
            } else if (option == "bool") {
                isBoolean = true;
            } else {
                throw "a log format has an unknown option";
            }
            options.remove_prefix(option.size() == options.size() ? option.size()
                                                                  : option.size() + 1);
        }
        at = close + 1;
    }
    while (at < format.size() && format[at] == 'l') {
        ++at;
    }
    const char conversion = at < format.size() ? format[at] : '\0';
    if (conversion == 'd') {
        placeholder.conversion = isBoolean ? LogConversion::boolean : LogConversion::signedInteger;
    } else if (conversion == 'u') {
        placeholder.conversion = LogConversion::unsignedInteger;
    } else if (conversion == 'f') {
        placeholder.conversion = LogConversion::floatingPoint;
    } else if (conversion == 's') {
        placeholder.conversion = LogConversion::text;
    } else {
        throw "a log format has an unknown conversion";
    }
    placeholder.end = at + 1;
    const bool isText = placeholder.conversion == LogConversion::text;
    placeholder.privacy = privacy.value_or(isText ? LogPrivacy::isPrivate : LogPrivacy::isPublic);
    return placeholder;
}

/// A log format with the types of its values, checked at compile time: one value per placeholder,
/// each of the placeholder's kind. A value may also be a function without arguments that returns
/// one; it is called only if the message is written.
template <typename... Values>
class LogFormat {
  public:
    template <std::size_t Size>
    // NOLINTNEXTLINE(google-explicit-constructor): a literal at a call site converts to a format.
    consteval LogFormat(const char (&literal)[Size]) : text_(literal, Size - 1) {
        std::size_t at = 0;
        (takePlaceholder<Values>(at), ...);
        if (nextLogPlaceholder(text_, at).has_value()) {
            throw "a log format has more placeholders than values";
        }
    }

    [[nodiscard]] constexpr std::string_view text() const { return text_; }

  private:
    template <typename Value>
    struct Evaluated {
        using Type = Value;
    };

    template <std::invocable Value>
    struct Evaluated<Value> {
        using Type = std::remove_cvref_t<std::invoke_result_t<Value>>;
    };

    template <typename Value>
    consteval void takePlaceholder(std::size_t& at) {
        const auto placeholder = nextLogPlaceholder(text_, at);
        if (!placeholder) {
            throw "a log format has fewer placeholders than values";
        }
        at = placeholder->end;
        using Type = typename Evaluated<std::remove_cvref_t<Value>>::Type;
        bool fits = false;
        switch (placeholder->conversion) {
        case LogConversion::boolean:
            fits = std::same_as<Type, bool>;
            break;
        case LogConversion::signedInteger:
            fits = std::signed_integral<Type>;
            break;
        case LogConversion::unsignedInteger:
            fits = std::unsigned_integral<Type> && !std::same_as<Type, bool>;
            break;
        case LogConversion::floatingPoint:
            fits = std::floating_point<Type>;
            break;
        case LogConversion::text:
            fits = std::convertible_to<Type, std::string_view>;
            break;
        }
        if (!fits) {
            throw "a log value is not of its placeholder's kind";
        }
    }

    std::string_view text_;
};

/// A part of a message whose values are all public or all private.
struct LogPiece {
    std::string text;
    LogPrivacy privacy = LogPrivacy::isPublic;
};

/// The text of a record, each placeholder replaced by its value, in pieces that are alternately
/// public and private, the first one public. Floating-point values have six decimals.
[[nodiscard]] std::vector<LogPiece> logPieces(const LogRecord& record);

/// Whether private values appear in a rendered message as they are or as "<private>".
enum class LogRendering : std::uint8_t { redacted, whole };

/// The text of a record in one piece.
[[nodiscard]] std::string renderLogMessage(const LogRecord& record, LogRendering rendering);

} // namespace foundation
