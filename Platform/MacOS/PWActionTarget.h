#pragma once

#include "Platform/Menu.h"

#import <Foundation/Foundation.h>

/// What a menu item or a control sends its action to. It understands the one message that the
/// action is named for.
@interface PWActionTarget : NSObject
- (instancetype)initWithAction:(platform::Action)action;
/// The message to send.
@property(nonatomic, readonly) SEL selector;
@end
