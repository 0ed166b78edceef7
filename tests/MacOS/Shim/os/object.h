// The base of the system's C objects that Objective-C counts references of.
#pragma once

#import <Foundation/NSObject.h>

#define OS_OBJECT_USE_OBJC 1

// A type `name_t` for pointers to objects of a protocol of its own: two such types do not mix.
#define OS_OBJECT_DECL(name)                                                                       \
    @protocol OS_                                                                                  \
    ##name<NSObject> @end                                                                          \
    typedef NSObject<OS_##name>* name##_t

#define OS_OBJECT_RETURNS_RETAINED __attribute__((ns_returns_retained))
