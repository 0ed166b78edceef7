#pragma once

#include "Platform/Views.h"

#import <AppKit/AppKit.h>

/// Tells a controller of the program's, which outlives it, what the system tells one of its own.
@interface PWViewController : NSViewController
- (instancetype)initWithController:(platform::ViewController*)controller;
@end
