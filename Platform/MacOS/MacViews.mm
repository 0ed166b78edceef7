#import "Platform/MacOS/MacViews.h"

@implementation PWWindow

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)isDeferred {
    self = [super initWithContentRect:contentRect styleMask:style backing:backing defer:isDeferred];
    [self showHasKeyboard:NO];
    return self;
}

- (void)becomeKeyWindow {
    [super becomeKeyWindow];
    [self showHasKeyboard:YES];
}

- (void)resignKeyWindow {
    [super resignKeyWindow];
    [self showHasKeyboard:NO];
}

- (void)showHasKeyboard:(BOOL)hasKeyboard {
    self.subtitle = hasKeyboard ? @"" : @"No keyboard input: click here first";
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    constexpr NSEventModifierFlags modifiers =
        NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagShift |
        NSEventModifierFlagControl;
    if ((event.modifierFlags & modifiers) == NSEventModifierFlagCommand) {
        // With Command held, every keyboard layout types Latin letters; Caps Lock capitals.
        NSString* const key = event.characters.lowercaseString;
        if ([key isEqualToString:@"w"]) {
            [self performClose:nil];
            return YES;
        }
        if ([key isEqualToString:@"q"]) {
            [NSApp terminate:nil];
            return YES;
        }
    }
    return [super performKeyEquivalent:event];
}

@end

/// Forwards the system's messages to a controller of the program's, which outlives it.
@interface PWViewController : NSViewController
- (instancetype)initWithController:(platform::ViewController*)controller;
@end

@implementation PWViewController {
    platform::ViewController* _controller;
}

- (instancetype)initWithController:(platform::ViewController*)controller {
    self = [super initWithNibName:nil bundle:nil];
    if (self != nil) {
        _controller = controller;
    }
    return self;
}

- (void)loadView {
    self.view = platform::MacViewNode::nsView(*_controller->view());
}

- (void)viewWillAppear {
    [super viewWillAppear];
    _controller->viewWillAppear();
}

- (void)viewDidLayout {
    [super viewDidLayout];
    _controller->viewDidLayout();
}

- (void)viewDidDisappear {
    [super viewDidDisappear];
    _controller->viewDidDisappear();
}

@end

namespace platform {

void MacWindow::setContentViewController(ViewController& controller) {
    const NSRect frame = window_.frame;
    window_.contentViewController = [[PWViewController alloc] initWithController:&controller];
    // The system gave the window the size of the controller's view, which moved its centre.
    [window_ setFrame:frame display:NO];
}

} // namespace platform
