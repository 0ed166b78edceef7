#pragma once

#include "Foundation/TextBuffer.h"
#include "Foundation/Value.h"
#include "Platform/Geometry.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Between the system's values and the program's.
[[nodiscard]] NSString* nsString(std::string_view utf8);
[[nodiscard]] NSSize nsSize(Size size);
[[nodiscard]] NSRect nsRect(Rect rect);
[[nodiscard]] NSFont* nsFont(SystemFont font);
[[nodiscard]] id nsObject(const foundation::Value& value);
[[nodiscard]] NSDictionary* nsDictionary(const foundation::Dictionary& dictionary);

/// In UTF-8; U+FFFD stands for half a surrogate pair. Null is an empty text.
[[nodiscard]] foundation::TextBuffer utf8Text(NSString* string);
[[nodiscard]] std::string utf8String(NSString* string);

/// A number, boolean or string; none for any other object.
[[nodiscard]] std::optional<foundation::Value> valueOf(id object);

/// What of a dictionary a Dictionary can hold.
[[nodiscard]] foundation::Dictionary dictionaryOf(NSDictionary* dictionary);

} // namespace platform
