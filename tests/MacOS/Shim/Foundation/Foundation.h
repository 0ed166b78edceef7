// GNUstep's Foundation, and what the real one has beyond it.
#pragma once

#include <Availability.h>
#include <CoreFoundation/CoreFoundation.h>
#include_next <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#ifndef API_AVAILABLE
#error "Availability.h is another one than the shim's"
#endif

#ifdef __cplusplus
extern "C" {
#endif

static inline id CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) object) {
    return (__bridge_transfer id)object;
}

CF_RETURNS_RETAINED static inline CFTypeRef CFBridgingRetain(id object) {
    return (__bridge_retained CFTypeRef)object;
}

#ifdef __cplusplus
}
#endif

@interface NSUserDefaults (Present)
- (instancetype)initWithSuiteName:(NSString*)name;
@end
