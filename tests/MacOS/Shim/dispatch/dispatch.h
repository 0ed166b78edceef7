#pragma once

#import <os/object.h>
#include <stdint.h>

OS_OBJECT_DECL(dispatch_queue);
OS_OBJECT_DECL(dispatch_semaphore);

@protocol OS_dispatch_queue_serial <OS_dispatch_queue>
@end
@protocol OS_dispatch_queue_main <OS_dispatch_queue_serial>
@end
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;
@protocol OS_dispatch_queue_global <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_global>* dispatch_queue_global_t;

#ifdef __cplusplus
extern "C" {
#endif

typedef void (^dispatch_block_t)(void);
typedef void (*dispatch_function_t)(void* context);
typedef uint64_t dispatch_time_t;

enum : unsigned long {
    DISPATCH_BLOCK_BARRIER = 0x1,
    DISPATCH_BLOCK_DETACHED = 0x2,
    DISPATCH_BLOCK_ASSIGN_CURRENT = 0x4,
    DISPATCH_BLOCK_NO_QOS_CLASS = 0x8,
    DISPATCH_BLOCK_INHERIT_QOS_CLASS = 0x10,
    DISPATCH_BLOCK_ENFORCE_QOS_CLASS = 0x20,
};

typedef unsigned long dispatch_block_flags_t;

#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull
#define USEC_PER_SEC 1000000ull
#define NSEC_PER_USEC 1000ull

#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)

struct dispatch_queue_s;
extern struct dispatch_queue_s _dispatch_main_q;

static inline dispatch_queue_main_t dispatch_get_main_queue(void) {
    return (__bridge dispatch_queue_main_t)(void*)&_dispatch_main_q;
}

enum : unsigned int {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
    QOS_CLASS_USER_INITIATED = 0x19,
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_UTILITY = 0x11,
    QOS_CLASS_BACKGROUND = 0x09,
};

dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_after_f(dispatch_time_t when,
                      dispatch_queue_t queue,
                      void* context,
                      dispatch_function_t work);
OS_OBJECT_RETURNS_RETAINED dispatch_block_t dispatch_block_create(dispatch_block_flags_t flags,
                                                                  dispatch_block_t block);
void dispatch_block_cancel(dispatch_block_t block);
long dispatch_block_testcancel(dispatch_block_t block);
OS_OBJECT_RETURNS_RETAINED dispatch_semaphore_t dispatch_semaphore_create(intptr_t value);
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout);
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore);
void dispatch_assert_queue(dispatch_queue_t queue);

#ifdef __cplusplus
}
#endif
