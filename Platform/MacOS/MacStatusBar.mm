#import "Platform/MacOS/MacStatusBar.h"

#import "Platform/MacOS/MacConversions.h"

@interface PWMenuDelegate : NSObject <NSMenuDelegate>
@property(nonatomic) platform::Menu* menu;
@end

@implementation PWMenuDelegate

- (void)menuWillOpen:(NSMenu*)nsMenu {
    self.menu->willOpen();
}

@end

namespace platform {

MacMenu::MacMenu(std::shared_ptr<Menu> menu) : menu_(std::move(menu)) {
    for (const auto& item : menu_->items()) {
        [nsMenu_ addItem:item->isSeparator() ? [NSMenuItem separatorItem] : followingItem(*item)];
    }
    PWMenuDelegate* const delegate = [[PWMenuDelegate alloc] init];
    delegate.menu = menu_.get();
    [targets_ addObject:delegate];
    nsMenu_.delegate = delegate;
}

MacMenu::~MacMenu() {
    nsMenu_.delegate = nil;
    for (auto& [item, token] : followed_) {
        item.removeTitleObserver(token);
    }
}

NSMenuItem* MacMenu::followingItem(MenuItem& item) {
    const KeyEquivalent key = item.keyEquivalent().value_or(KeyEquivalent{});
    NSMenuItem* const nsItem = [[NSMenuItem alloc] initWithTitle:nsString(item.title())
                                                          action:nil
                                                   keyEquivalent:nsString(key.key)];
    nsItem.keyEquivalentModifierMask = key.modifierMask.rawValue;
    // The menu disables a row that has no action.
    if (item.isEnabled()) {
        PWActionTarget* const target = [[PWActionTarget alloc] initWithAction:item.action()];
        [targets_ addObject:target];
        nsItem.target = target;
        nsItem.action = target.selector;
    }
    followed_.emplace_back(
        item, item.addTitleObserver([&item, nsItem] { nsItem.title = nsString(item.title()); }));
    return nsItem;
}

} // namespace platform
