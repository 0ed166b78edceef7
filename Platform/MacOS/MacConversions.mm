#import "Platform/MacOS/MacConversions.h"

#include "Foundation/Unicode.h"

#import <objc/runtime.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>
#include <variant>

namespace platform {

namespace {

using Seconds = std::chrono::duration<double>;

struct ObjectMaker {
    id operator()(foundation::Other /*value*/) const { return nil; }

    id operator()(bool value) const { return [NSNumber numberWithBool:value]; }

    id operator()(std::int64_t value) const { return [NSNumber numberWithLongLong:value]; }

    id operator()(std::uint64_t value) const { return [NSNumber numberWithUnsignedLongLong:value]; }

    id operator()(double value) const { return [NSNumber numberWithDouble:value]; }

    id operator()(const std::string& value) const { return nsString(value); }

    id operator()(foundation::Date value) const {
        return [NSDate dateWithTimeIntervalSince1970:Seconds(value.time_since_epoch()).count()];
    }

    id operator()(const foundation::Dictionary& values) const {
        NSMutableDictionary* const objects = [NSMutableDictionary dictionary];
        for (const auto& [key, value] : values) {
            const id object = nsObject(value);
            if (object == nil) {
                return nil;
            }
            objects[nsString(key)] = object;
        }
        return objects;
    }
};

foundation::Value numberOf(NSNumber* number) {
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

foundation::Value dateOf(NSDate* date) {
    const Seconds time(date.timeIntervalSince1970);
    constexpr Seconds limit = std::chrono::microseconds::max();
    if (!(std::abs(time.count()) < limit.count())) {
        return foundation::Other{};
    }
    return foundation::Date(std::chrono::round<std::chrono::microseconds>(time));
}

} // namespace

NSString* nsString(std::string_view utf8) {
    // From characters: a decoder might take the first one for a byte order mark.
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

foundation::TextBuffer utf8Text(NSString* string) {
    std::u16string units(string.length, u'\0');
    [string getCharacters:reinterpret_cast<unichar*>(units.data())
                    range:NSMakeRange(0, units.size())];
    return foundation::utf8FromUtf16(units);
}

std::string utf8String(NSString* string) {
    return std::string(utf8Text(string).view());
}

foundation::Value valueOf(id object) {
    if ([object isKindOfClass:[NSString class]]) {
        return utf8String(object);
    }
    if ([object isKindOfClass:[NSNumber class]]) {
        return numberOf(object);
    }
    if ([object isKindOfClass:[NSDate class]]) {
        return dateOf(object);
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        return dictionaryOf(object);
    }
    return foundation::Other{};
}

foundation::Dictionary dictionaryOf(NSDictionary* dictionary) {
    foundation::Dictionary values;
    for (id key in dictionary) {
        if ([key isKindOfClass:[NSString class]]) {
            values.emplace(utf8String(key), valueOf(dictionary[key]));
        }
    }
    return values;
}

} // namespace platform

@implementation PWActionTarget {
    platform::Action _action;
}

- (instancetype)initWithAction:(platform::Action)action {
    self = [super init];
    if (self != nil) {
        _action = std::move(action);
        _selector = NSSelectorFromString(platform::nsString(_action.name));
        const IMP method = [self methodForSelector:@selector(perform)];
        class_addMethod([PWActionTarget class], _selector, method, "v@:");
    }
    return self;
}

/// The implementation of every action's message.
- (void)perform {
    // A copy: the action may destroy this target.
    const auto action = _action.perform;
    action();
}

@end
