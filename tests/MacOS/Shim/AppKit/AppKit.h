// GNUstep's AppKit and the additional parts of the real one that this program uses.
#pragma once

#include_next <AppKit/AppKit.h>
#import <AppKit/NSStatusBarButton.h>
#import <Foundation/Foundation.h>

// Enumerators under their current names; the values are the same.
static const NSEventType NSEventTypeKeyDown = NSKeyDown;
static const NSEventType NSEventTypeKeyUp = NSKeyUp;
static const NSEventType NSEventTypeFlagsChanged = NSFlagsChanged;
static const NSEventType NSEventTypeApplicationDefined = NSApplicationDefined;
static const NSBezelStyle NSBezelStyleRounded = NSRoundedBezelStyle;
static const NSAlertStyle NSAlertStyleWarning = NSWarningAlertStyle;
static const NSAlertStyle NSAlertStyleInformational = NSInformationalAlertStyle;
static const NSAlertStyle NSAlertStyleCritical = NSCriticalAlertStyle;
static const NSCompositingOperation NSCompositingOperationClear = NSCompositeClear;
static const NSCompositingOperation NSCompositingOperationCopy = NSCompositeCopy;
static const NSCompositingOperation NSCompositingOperationSourceOver = NSCompositeSourceOver;

enum : NSEventMask {
    NSEventMaskKeyDown = NSKeyDownMask,
    NSEventMaskKeyUp = NSKeyUpMask,
    NSEventMaskFlagsChanged = NSFlagsChangedMask,
    NSEventMaskAny = NSUIntegerMax,
};

enum : NSEventModifierFlags {
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
    NSEventModifierFlagNumericPad = 1 << 21,
    NSEventModifierFlagHelp = 1 << 22,
    NSEventModifierFlagFunction = 1 << 23,
    NSEventModifierFlagDeviceIndependentFlagsMask = 0xffff0000UL,
};

static const NSCellImagePosition NSImageLeading = static_cast<NSCellImagePosition>(7);
static const NSCellImagePosition NSImageTrailing = static_cast<NSCellImagePosition>(8);

typedef enum NSStackViewDistribution : NSInteger {
    NSStackViewDistributionGravityAreas = -1,
    NSStackViewDistributionFill = 0,
    NSStackViewDistributionFillEqually,
    NSStackViewDistributionFillProportionally,
    NSStackViewDistributionEqualSpacing,
    NSStackViewDistributionEqualCentering,
} NSStackViewDistribution;

// The old names are deprecated, and a deprecated name is an error in this project.
#pragma clang poison NSKeyDownMask NSKeyUpMask NSFlagsChangedMask NSKeyDown NSKeyUp NSFlagsChanged
#pragma clang poison NSApplicationDefined NSRoundedBezelStyle NSOnState NSOffState NSMixedState
#pragma clang poison NSWarningAlertStyle NSInformationalAlertStyle NSCriticalAlertStyle
#pragma clang poison NSCompositeClear NSCompositeCopy NSCompositeSourceOver
#pragma clang poison NSAlphaShiftKeyMask NSShiftKeyMask NSControlKeyMask NSAlternateKeyMask
#pragma clang poison NSCommandKeyMask NSNumericPadKeyMask NSHelpKeyMask NSFunctionKeyMask
#pragma clang poison NSDeviceIndependentModifierFlagsMask NSTitledWindowMask NSClosableWindowMask
#pragma clang poison NSMiniaturizableWindowMask NSResizableWindowMask NSBorderlessWindowMask
#pragma clang poison NSCenterTextAlignment NSNaturalTextAlignment NSLeftTextAlignment
#pragma clang poison NSStringPboardType NSHTMLPboardType

typedef enum NSPasteboardAccessBehavior : NSInteger {
    NSPasteboardAccessBehaviorDefault,
    NSPasteboardAccessBehaviorAsk,
    NSPasteboardAccessBehaviorAlwaysAllow,
    NSPasteboardAccessBehaviorAlwaysDeny,
} NSPasteboardAccessBehavior;

@interface NSPasteboard (Present)
- (NSInteger)clearContents;
@property(readonly) NSPasteboardAccessBehavior accessBehavior API_AVAILABLE(macos(15.4));
@end

@interface NSStatusItem (Present)
@property(nonatomic, readonly, strong) NSStatusBarButton* button;
@property(nonatomic, getter=isVisible) BOOL visible;
@end

@protocol NSAnimatablePropertyContainer
- (instancetype)animator;
@end

@interface NSView (Present) <NSAnimatablePropertyContainer>
@property(nonatomic, readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(nonatomic, readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(nonatomic, readonly, strong) NSLayoutXAxisAnchor* leftAnchor;
@property(nonatomic, readonly, strong) NSLayoutXAxisAnchor* rightAnchor;
@property(nonatomic, readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(nonatomic, readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property(nonatomic, readonly, strong) NSLayoutDimension* widthAnchor;
@property(nonatomic, readonly, strong) NSLayoutDimension* heightAnchor;
@property(nonatomic, readonly, strong) NSLayoutXAxisAnchor* centerXAnchor;
@property(nonatomic, readonly, strong) NSLayoutYAxisAnchor* centerYAnchor;
@property(nonatomic) BOOL translatesAutoresizingMaskIntoConstraints;
@property(nonatomic) BOOL wantsLayer;
@property(nonatomic) CGFloat alphaValue;
- (void)layoutSubtreeIfNeeded;
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation;
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation;
@end

@interface NSStackView : NSView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
@property(nonatomic) NSUserInterfaceLayoutOrientation orientation;
@property(nonatomic) NSLayoutAttribute alignment;
@property(nonatomic) NSStackViewDistribution distribution;
@property(nonatomic) CGFloat spacing;
@property(nonatomic) NSEdgeInsets edgeInsets;
@property(nonatomic, readonly, copy) NSArray<NSView*>* arrangedSubviews;
- (void)addArrangedSubview:(NSView*)view;
- (void)removeArrangedSubview:(NSView*)view;
@end

@interface NSTextField (Present)
+ (instancetype)labelWithString:(NSString*)text;
+ (instancetype)wrappingLabelWithString:(NSString*)text;
@property(nonatomic) NSInteger maximumNumberOfLines;
@property(nonatomic) CGFloat preferredMaxLayoutWidth;
@end

@interface NSControl (Present)
@property(nonatomic) NSLineBreakMode lineBreakMode;
@end

@interface NSButton (Present)
+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action;
+ (instancetype)buttonWithImage:(NSImage*)image target:(id)target action:(SEL)action;
@end

@interface NSImage (Present)
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description API_AVAILABLE(macos(11.0));
+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)isFlipped
           drawingHandler:(BOOL (^)(NSRect rect))handler;
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSFont (Present)
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end

@interface NSEvent (Present)
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                   handler:(NSEvent* (^)(NSEvent* event))handler;
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask
                                    handler:(void (^)(NSEvent* event))handler;
+ (void)removeMonitor:(id)monitor;
@end

// The system's own implementations do something in some versions, so overrides call super.
@interface NSViewController (Present)
- (void)viewDidLoad __attribute__((objc_requires_super));
- (void)viewWillAppear __attribute__((objc_requires_super));
- (void)viewDidAppear __attribute__((objc_requires_super));
- (void)viewWillDisappear __attribute__((objc_requires_super));
- (void)viewDidDisappear __attribute__((objc_requires_super));
- (void)viewWillLayout __attribute__((objc_requires_super));
- (void)viewDidLayout __attribute__((objc_requires_super));
@property(nonatomic, readonly, getter=isViewLoaded) BOOL viewLoaded;
@end

@interface NSWindow (Present)
@property(nonatomic, strong) NSViewController* contentViewController;
@property(nonatomic, copy) NSString* subtitle API_AVAILABLE(macos(11.0));
@end

// The real one has it in the delegate's protocol.
@interface NSObject (ApplicationDelegate)
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application
    API_AVAILABLE(macos(12.0));
@end

@interface NSApplication (Present)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activate API_AVAILABLE(macos(14.0));
@end

@interface NSMenuItem (Present)
@property(nonatomic, copy) NSString* subtitle API_AVAILABLE(macos(14.4));
@end
