#import "Platform/MacOS/PWActionTarget.h"

#import "Platform/MacOS/MacConversions.h"

#import <objc/runtime.h>

#include <utility>

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

/// The method behind every action's message.
- (void)perform {
    // The action may be the end of this target.
    const auto action = _action.perform;
    action();
}

@end
