#pragma once

#include "Foundation/TextBuffer.h"
#include "Foundation/Value.h"
#include "Platform/Geometry.h"
#include "Platform/Menu.h"

#import <AppKit/AppKit.h>

#include <string>
#include <string_view>

namespace platform {

/// The system's values for the program's.
[[nodiscard]] NSString* nsString(std::string_view utf8);
[[nodiscard]] NSSize nsSize(Size size);
[[nodiscard]] NSRect nsRect(Rect rect);
[[nodiscard]] NSFont* nsFont(SystemFont font);

/// In UTF-8; U+FFFD replaces half a surrogate pair. Nil is an empty text.
[[nodiscard]] foundation::TextBuffer utf8Text(NSString* string);
[[nodiscard]] std::string utf8String(NSString* string);

/// Nil for foundation::Other, and for a dictionary that holds it.
[[nodiscard]] id nsObject(const foundation::Value& value);

/// foundation::Other for nil, for an object of another class, and for a date out of Date's range.
[[nodiscard]] foundation::Value valueOf(id object);

/// Without the entries whose keys are not strings.
[[nodiscard]] foundation::Dictionary dictionaryOf(NSDictionary* dictionary);

} // namespace platform

/// The target of a menu item or control: it understands the message that the action is named after.
@interface PWActionTarget : NSObject
- (instancetype)initWithAction:(platform::Action)action;
/// The message to send.
@property(nonatomic, readonly) SEL selector;
@end
