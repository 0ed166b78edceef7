#import "Platform/MacOS/MacConversions.h"

#include "Foundation/Utf16.h"

#include <cstdint>
#include <variant>

namespace platform {

namespace {

struct ObjectMaker {
    id operator()(bool value) const { return [NSNumber numberWithBool:value]; }

    id operator()(std::int64_t value) const { return [NSNumber numberWithLongLong:value]; }

    id operator()(std::uint64_t value) const { return [NSNumber numberWithUnsignedLongLong:value]; }

    id operator()(double value) const { return [NSNumber numberWithDouble:value]; }

    id operator()(const std::string& value) const { return nsString(value); }
};

} // namespace

NSString* nsString(std::string_view utf8) {
    // By characters: a decoder of the system's may take the first one for a mark of the encoding.
    const std::u16string units = foundation::utf16FromUtf8(utf8);
    return [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar*>(units.data())
                                         length:units.size()];
}

NSSize nsSize(Size size) {
    return NSMakeSize(size.width, size.height);
}

NSRect nsRect(Rect rect) {
    return NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

NSFont* nsFont(SystemFont font) {
    return font.weight == FontWeight::bold ? [NSFont boldSystemFontOfSize:font.size]
                                           : [NSFont systemFontOfSize:font.size];
}

id nsObject(const foundation::Value& value) {
    return std::visit(ObjectMaker{}, value);
}

NSDictionary* nsDictionary(const foundation::Dictionary& dictionary) {
    NSMutableDictionary* const objects = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : dictionary) {
        objects[nsString(key)] = nsObject(value);
    }
    return objects;
}

foundation::TextBuffer utf8Text(NSString* string) {
    std::u16string units(string.length, u'\0');
    [string getCharacters:reinterpret_cast<unichar*>(units.data())
                    range:NSMakeRange(0, units.size())];
    return foundation::utf8FromUtf16(units);
}

std::string utf8String(NSString* string) {
    return std::string(utf8Text(string).view());
}

std::optional<foundation::Value> valueOf(id object) {
    if ([object isKindOfClass:[NSString class]]) {
        return utf8String(object);
    }
    if (![object isKindOfClass:[NSNumber class]]) {
        return std::nullopt;
    }
    NSNumber* const number = object;
    // By its Objective-C type a boolean is a small integer; only Core Foundation tells them apart.
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID()) {
        return static_cast<bool>(number.boolValue);
    }
    switch (*number.objCType) {
    case 'f':
    case 'd':
        return number.doubleValue;
    case 'Q':
        return std::uint64_t{number.unsignedLongLongValue};
    default:
        return std::int64_t{number.longLongValue};
    }
}

foundation::Dictionary dictionaryOf(NSDictionary* dictionary) {
    foundation::Dictionary values;
    for (id key in dictionary) {
        const auto value = valueOf(dictionary[key]);
        if (value && [key isKindOfClass:[NSString class]]) {
            values.emplace(utf8String(key), *value);
        }
    }
    return values;
}

} // namespace platform
