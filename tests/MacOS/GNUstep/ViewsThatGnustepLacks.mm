// Parts of AppKit that the adapters use and GNUstep lacks, as far as the tests need them.

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include <algorithm>
#include <map>

@implementation NSTextField (Missing)

+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* const label = [[self alloc] initWithFrame:NSZeroRect];
    label.stringValue = text;
    label.editable = NO;
    return label;
}

+ (instancetype)wrappingLabelWithString:(NSString*)text {
    return [self labelWithString:text];
}

@end

@implementation NSButton (Missing)

+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
    NSButton* const button = [[self alloc] initWithFrame:NSZeroRect];
    button.title = title;
    button.target = target;
    button.action = action;
    return button;
}

@end

// Only the part that the tests need.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wincomplete-implementation"

@implementation NSStackView

- (void)addArrangedSubview:(NSView*)view {
    [self addSubview:view];
}

@end

#pragma clang diagnostic pop

namespace {

NSMutableArray<NSLayoutConstraint*>* activeConstraints() {
    static NSMutableArray* const active = [NSMutableArray array];
    return active;
}

/// Constraints do not own their views.
NSMutableArray<NSView*>* constrainedViews() {
    static NSMutableArray* const views = [NSMutableArray array];
    return views;
}

/// Gives the views the smallest frames that satisfy the constraint, which is one of those that the
/// program has.
void apply(NSLayoutConstraint* constraint) {
    NSView* const first = [constraint firstItem];
    NSView* const second = [constraint secondItem];
    NSRect frame = first.frame;
    switch ([constraint firstAttribute]) {
    case NSLayoutAttributeWidth:
        frame.size.width =
            std::max(NSWidth(frame), second ? NSWidth(second.frame) : [constraint constant]);
        break;
    case NSLayoutAttributeCenterX:
        frame.origin.x = NSMidX(second.bounds) - NSWidth(frame) / 2;
        break;
    case NSLayoutAttributeTop:
        frame.size.height = std::max(NSHeight(frame), 20.0);
        [second setFrameSize:NSMakeSize(NSWidth(second.frame),
                                        std::max(NSHeight(second.frame), NSHeight(frame)))];
        break;
    default:
        break;
    }
    first.frame = frame;
}

} // namespace

// GNUstep's own records them and does nothing with them.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

@implementation NSLayoutConstraint (Missing)

+ (void)activateConstraints:(NSArray*)constraints {
    for (NSLayoutConstraint* constraint in constraints) {
        [activeConstraints() addObject:constraint];
        [constrainedViews() addObject:[constraint firstItem]];
        if ([constraint secondItem] != nil) {
            [constrainedViews() addObject:[constraint secondItem]];
        }
    }
}

@end

#pragma clang diagnostic pop

@implementation NSView (Missing)

/// Without animation: the final value applies at once.
- (instancetype)animator {
    return self;
}

- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)translates {
}

- (void)layoutSubtreeIfNeeded {
    // A container grows with what it contains, which is then centred in it.
    for (int pass = 0; pass < 3; ++pass) {
        for (NSLayoutConstraint* constraint in activeConstraints()) {
            if ([[constraint firstItem] isDescendantOf:self]) {
                apply(constraint);
            }
        }
    }
}

@end

/// Draws itself whenever it is shown.
@interface PWTestDrawing : NSImageRep
@property(nonatomic, copy) BOOL (^handler)(NSRect);
@end

@implementation PWTestDrawing

- (BOOL)draw {
    return self.handler(NSMakeRect(0, 0, self.size.width, self.size.height));
}

- (id)copyWithZone:(NSZone*)zone {
    PWTestDrawing* const copy = [super copyWithZone:zone];
    copy.handler = self.handler;
    return copy;
}

@end

@interface PWTestImage : NSImage
@end

@implementation PWTestImage {
    BOOL _isTemplate;
}

- (BOOL)isTemplate {
    return _isTemplate;
}

- (void)setTemplate:(BOOL)isTemplate {
    _isTemplate = isTemplate;
}

@end

@implementation NSImage (Missing)

+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)isFlipped
           drawingHandler:(BOOL (^)(NSRect rect))handler {
    PWTestDrawing* const drawing = [[PWTestDrawing alloc] init];
    drawing.size = size;
    drawing.handler = handler;
    NSImage* const image = [[PWTestImage alloc] initWithSize:size];
    [image addRepresentation:drawing];
    return image;
}

@end

@interface PWTestMonitor : NSObject
@property(nonatomic) NSEventMask mask;
@property(nonatomic, copy) NSEvent* (^handler)(NSEvent*);
@end

@implementation PWTestMonitor
@end

namespace {

NSMutableArray* monitors() {
    static NSMutableArray* const added = [NSMutableArray array];
    return added;
}

/// Replaces a method by `hook` and returns the original.
IMP replaceMethod(Class owner, SEL selector, IMP hook) {
    return method_setImplementation(class_getInstanceMethod(owner, selector), hook);
}

IMP originalSendEvent;

void sendEventPastMonitors(NSApplication* self, SEL selector, NSEvent* event) {
    for (PWTestMonitor* monitor in [monitors() copy]) {
        if (event != nil && (NSEventMaskFromType(event.type) & monitor.mask) != 0) {
            event = monitor.handler(event);
        }
    }
    if (event != nil) {
        reinterpret_cast<void (*)(id, SEL, NSEvent*)>(originalSendEvent)(self, selector, event);
    }
}

} // namespace

@implementation NSEvent (Missing)

+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                   handler:(NSEvent* (^)(NSEvent* event))handler {
    if (originalSendEvent == nullptr) {
        originalSendEvent = replaceMethod([NSApplication class],
                                          @selector(sendEvent:),
                                          reinterpret_cast<IMP>(sendEventPastMonitors));
    }
    PWTestMonitor* const monitor = [[PWTestMonitor alloc] init];
    monitor.mask = mask;
    monitor.handler = handler;
    [monitors() addObject:monitor];
    return monitor;
}

+ (void)removeMonitor:(id)monitor {
    [monitors() removeObjectIdenticalTo:monitor];
}

@end

@implementation NSViewController (Missing)

- (void)viewWillAppear {
}

- (void)viewDidLayout {
}

- (void)viewDidDisappear {
}

@end

namespace {

/// The controllers of the windows that have one.
std::map<const void*, NSViewController*>& controllers() {
    static auto* const set = new std::map<const void*, NSViewController*>;
    return *set;
}

/// The subtitles of the windows that have one.
std::map<const void*, NSString*>& subtitles() {
    static auto* const set = new std::map<const void*, NSString*>;
    return *set;
}

IMP originalOrderWindow;

void orderWindowAndTellController(NSWindow* self,
                                  SEL selector,
                                  NSWindowOrderingMode place,
                                  NSInteger other) {
    NSViewController* const controller = self.contentViewController;
    const bool wasVisible = [self isVisible];
    const bool isToBeVisible = place != NSWindowOut;
    if (!wasVisible && isToBeVisible) {
        [controller viewWillAppear];
        [controller performSelector:@selector(viewDidLayout) withObject:nil afterDelay:0];
    }
    reinterpret_cast<void (*)(id, SEL, NSWindowOrderingMode, NSInteger)>(originalOrderWindow)(
        self, selector, place, other);
    if (wasVisible && !isToBeVisible) {
        [NSObject cancelPreviousPerformRequestsWithTarget:controller];
        [controller viewDidDisappear];
    }
}

} // namespace

@implementation NSWindow (Missing)

- (NSString*)subtitle {
    return subtitles()[(__bridge const void*)self];
}

- (void)setSubtitle:(NSString*)subtitle {
    subtitles()[(__bridge const void*)self] = subtitle;
}

- (NSViewController*)contentViewController {
    const auto found = controllers().find((__bridge const void*)self);
    return found == controllers().end() ? nil : found->second;
}

/// As the real one does, this gives the window the size of the controller's view, below its title
/// bar.
- (void)setContentViewController:(NSViewController*)controller {
    if (originalOrderWindow == nullptr) {
        originalOrderWindow = replaceMethod([NSWindow class],
                                            @selector(orderWindow:relativeTo:),
                                            reinterpret_cast<IMP>(orderWindowAndTellController));
    }
    if (controller == nil) {
        controllers().erase((__bridge const void*)self);
        self.contentView = nil;
        return;
    }
    controllers()[(__bridge const void*)self] = controller;
    const NSPoint topLeft = NSMakePoint(NSMinX(self.frame), NSMaxY(self.frame));
    [self setContentSize:controller.view.frame.size];
    [self setFrameTopLeftPoint:topLeft];
    self.contentView = controller.view;
}

@end
