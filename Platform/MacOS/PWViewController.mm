#import "Platform/MacOS/PWViewController.h"

#import "Platform/MacOS/MacViews.h"

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
