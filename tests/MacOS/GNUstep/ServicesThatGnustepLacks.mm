// System services that the adapters use and GNUstep lacks, as far as the tests need them.

#import <AppKit/AppKit.h>
#import <dispatch/dispatch.h>

#include <chrono>
#include <memory>
#include <semaphore>

/// Runs a block on the main thread.
@interface PWTestWork : NSObject
- (instancetype)initWithBlock:(dispatch_block_t)block;
- (void)run;
@end

@implementation PWTestWork {
    dispatch_block_t _block;
}

- (instancetype)initWithBlock:(dispatch_block_t)block {
    self = [super init];
    if (self != nil) {
        _block = block;
    }
    return self;
}

- (void)run {
    _block();
}

@end

extern "C" void* _NSConcreteGlobalBlock[];

/// Retained and released like an object, so it is a global block: a real object would have to be
/// made at run time.
struct dispatch_queue_s {
    void* kind = _NSConcreteGlobalBlock;
    int flags = 1 << 28;
};

dispatch_queue_s _dispatch_main_q;

dispatch_queue_global_t dispatch_get_global_queue(intptr_t /*identifier*/, uintptr_t /*flags*/) {
    static dispatch_queue_s queue;
    return (__bridge dispatch_queue_global_t) static_cast<void*>(&queue);
}

/// In nanoseconds from now: it is always used at once.
dispatch_time_t dispatch_time(dispatch_time_t /*when*/, int64_t nanoseconds) {
    return static_cast<dispatch_time_t>(nanoseconds);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    PWTestWork* const work = [[PWTestWork alloc] initWithBlock:block];
    if (queue == dispatch_get_main_queue()) {
        [work performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:NO];
    } else {
        [NSThread detachNewThreadSelector:@selector(run) toTarget:work withObject:nil];
    }
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t /*queue*/, dispatch_block_t block) {
    [NSTimer scheduledTimerWithTimeInterval:static_cast<double>(when) / NSEC_PER_SEC
                                     target:[[PWTestWork alloc] initWithBlock:block]
                                   selector:@selector(run)
                                   userInfo:nil
                                    repeats:NO];
}

@interface PWTestSemaphore : NSObject <OS_dispatch_semaphore>
@end

@implementation PWTestSemaphore {
  @public
    std::unique_ptr<std::counting_semaphore<>> _semaphore;
}
@end

dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) {
    PWTestSemaphore* const made = [[PWTestSemaphore alloc] init];
    made->_semaphore = std::make_unique<std::counting_semaphore<>>(value);
    return made;
}

intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout) {
    auto& counted = *static_cast<PWTestSemaphore*>(semaphore)->_semaphore;
    if (timeout == DISPATCH_TIME_FOREVER) {
        counted.acquire();
        return 0;
    }
    return counted.try_acquire_for(std::chrono::nanoseconds(timeout)) ? 0 : 1;
}

intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
    static_cast<PWTestSemaphore*>(semaphore)->_semaphore->release();
    return 0;
}

CFTypeID CFBooleanGetTypeID() {
    return 1;
}

/// Only booleans, which are two objects, are distinguished from the other types.
CFTypeID CFGetTypeID(CFTypeRef object) {
    return object == (__bridge CFTypeRef)[NSNumber numberWithBool:YES] ||
                   object == (__bridge CFTypeRef)[NSNumber numberWithBool:NO]
               ? CFBooleanGetTypeID()
               : 2;
}

/// GNUstep stores settings under the name of the process and ignores the suite; the folder is the
/// test's own.
@interface PWTestSuite : NSUserDefaults
@end

@implementation PWTestSuite

- (void)removePersistentDomainForName:(NSString*)name {
    [super removePersistentDomainForName:[[NSProcessInfo processInfo] processName]];
}

@end

@implementation NSUserDefaults (Missing)

- (instancetype)initWithSuiteName:(NSString*)name {
    NSUserDefaults* const suite = [[PWTestSuite alloc] init];
    suite.searchList = @[ [[NSProcessInfo processInfo] processName] ];
    // Reads the stored settings, which GNUstep does not do by itself.
    [suite synchronize];
    return suite;
}

@end
