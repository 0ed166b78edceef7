// The base of the system's C objects that Objective-C retains and releases.
#pragma once

#import <Foundation/NSObject.h>

#define OS_OBJECT_USE_OBJC 1

// A pointer type `name_t` with a protocol of its own: two such types do not convert to each other.
#define OS_OBJECT_DECL(name)                                                                       \
    @protocol OS_                                                                                  \
    ##name<NSObject> @end                                                                          \
    typedef NSObject<OS_##name>* name##_t

#define OS_OBJECT_RETURNS_RETAINED __attribute__((ns_returns_retained))
