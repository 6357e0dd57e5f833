#import "ui/appkit/ReviewWindow.h"

#include <cfloat>
#include <utility>

#include "ui/Texts.h"
#import "ui/appkit/AppKitValues.h"

namespace measures = tavelo::measures;
namespace texts = tavelo::texts;
using tavelo::toAppKit;

namespace {

NSWindow* makeWindow() {
  const NSSize size = toAppKit(measures::reviewSize);
  NSWindow* window = [[NSWindow alloc]
      initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskResizable
                  backing:NSBackingStoreBuffered
                    defer:NO];
  // It serves every review.
  window.releasedWhenClosed = NO;
  window.title = toAppKit(texts::reviewTitle);
  return window;
}

NSTextView* makeTextView() {
  NSTextView* view = [[NSTextView alloc] initWithFrame:NSZeroRect];
  view.font = [NSFont systemFontOfSize:measures::reviewFont];
  view.richText = NO;
  view.textContainerInset = NSMakeSize(measures::reviewTextInset, measures::reviewTextInset);
  view.editable = YES;
  view.allowsUndo = YES;
  view.accessibilityLabel = toAppKit(texts::reviewedText);
  // As wide as what can be seen of it, and as high as its text.
  view.minSize = NSZeroSize;
  view.maxSize = NSMakeSize(FLT_MAX, FLT_MAX);
  view.verticallyResizable = YES;
  view.horizontallyResizable = NO;
  view.autoresizingMask = NSViewWidthSizable;
  view.textContainer.size = NSMakeSize(0, FLT_MAX);
  view.textContainer.widthTracksTextView = YES;
  return view;
}

NSScrollView* makeScrollView(NSTextView* document) {
  NSScrollView* view = [[NSScrollView alloc] initWithFrame:NSZeroRect];
  view.translatesAutoresizingMaskIntoConstraints = NO;
  view.hasVerticalScroller = YES;
  view.hasHorizontalScroller = NO;
  view.documentView = document;
  return view;
}

NSButton* makeButton(const char* title, id target, SEL action) {
  NSButton* button = [NSButton buttonWithTitle:toAppKit(title) target:target action:action];
  button.bezelStyle = NSBezelStyleRounded;
  return button;
}

NSStackView* makeRow(NSArray<NSView*>* buttons) {
  NSStackView* row = [NSStackView stackViewWithViews:buttons];
  row.translatesAutoresizingMaskIntoConstraints = NO;
  row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  row.alignment = NSLayoutAttributeCenterY;
  row.distribution = NSStackViewDistributionGravityAreas;
  row.spacing = measures::reviewButtonSpacing;
  return row;
}

}  // namespace

@implementation TaveloReviewWindow {
  tavelo::ReviewActions _actions;
  /// While the window closes because the text was inserted.
  BOOL _closesAfterInsertion;
}

- (instancetype)initWithActions:(tavelo::ReviewActions)actions {
  self = [super initWithWindow:makeWindow()];
  if (self) {
    _actions = std::move(actions);
    _textView = makeTextView();
    self.window.delegate = self;
    [self buildContent];
  }
  return self;
}

- (void)buildContent {
  NSView* content = self.window.contentView;
  if (content == nil) return;
  NSScrollView* scrollView = makeScrollView(self.textView);
  NSStackView* row = makeRow(@[
    makeButton(texts::cancel, self, @selector(cancel)), makeButton(texts::insert, self, @selector(insert))
  ]);
  [content addSubview:scrollView];
  [content addSubview:row];
  constexpr CGFloat inset = measures::reviewInset;
  [NSLayoutConstraint activateConstraints:@[
    [scrollView.leadingAnchor constraintEqualToAnchor:content.leadingAnchor constant:inset],
    [scrollView.trailingAnchor constraintEqualToAnchor:content.trailingAnchor constant:-inset],
    [scrollView.topAnchor constraintEqualToAnchor:content.topAnchor constant:inset],
    [scrollView.bottomAnchor constraintEqualToAnchor:row.topAnchor constant:-measures::reviewRowSpacing],
    [row.trailingAnchor constraintEqualToAnchor:content.trailingAnchor constant:-inset],
    [row.bottomAnchor constraintEqualToAnchor:content.bottomAnchor constant:-inset]
  ]];
}

- (void)showText:(NSString*)text {
  self.textView.string = text;
  // Its steps are those of the text before.
  [self.textView.undoManager removeAllActions];
  [self.window center];
  [self.window makeKeyAndOrderFront:nil];
  // The newer `activate` only asks, and the application in front may keep the focus.
  [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

- (void)insert {
  // A copy, since the callback may end the controller.
  if (const auto insert = _actions.insert) insert();
}

- (void)cancel {
  [self.window close];
}

- (void)closeAfterInsertion {
  _closesAfterInsertion = YES;
  [self.window close];
  _closesAfterInsertion = NO;
}

- (void)disconnect {
  _actions = {};
  [self.window close];
}

- (void)windowWillClose:(NSNotification*)notification {
  if (_closesAfterInsertion) return;
  if (const auto dismiss = _actions.dismiss) dismiss();
}

@end
