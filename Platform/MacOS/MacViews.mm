#import "Platform/MacOS/MacViews.h"

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
    const NSSize size = [window_ contentRectForFrameRect:window_.frame].size;
    window_.contentViewController = [[PWViewController alloc] initWithController:&controller];
    // The system gave the window the size of the controller's view.
    [window_ setContentSize:size];
}

} // namespace platform
