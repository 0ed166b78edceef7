// GNUstep's Foundation and the additional parts of the real one.
#pragma once

#include <Availability.h>
#include <CoreFoundation/CoreFoundation.h>
#include_next <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#ifndef API_AVAILABLE
#error "this is not the Availability.h of the shim"
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
