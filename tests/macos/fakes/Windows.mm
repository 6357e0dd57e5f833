// The application, its windows, menus and alerts. Alerts and menus wait for a test that answers "runModal" or
// "popUpMenuPositioningItem:atLocation:inView:".
#include <algorithm>
#include <sstream>

#include "tests/macos/fakes/AppKitFakes.h"

using tavelo::fakes::record;

@implementation NSApplication
@end
@implementation NSScreen
@end
@implementation NSPanel
@end
@implementation NSAlert {
  NSImage* image_;
}
- (instancetype)init {
  self.window = [NSPanel new];
  self.window.preventsApplicationTerminationWhenModal = YES;
  return self;
}
- (NSImage*)icon {
  return image_;
}
- (void)setIcon:(NSImage*)icon {
  image_ = icon;
}
@end
@implementation NSStatusBarButton
@end

@implementation NSWindow
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag {
  self.frame = contentRect;
  self.styleMask = style;
  self.backingType = backing;
  self.deferred = flag;
  self.contentView = [[NSView alloc] initWithFrame:contentRect];
  self.opaque = self.releasedWhenClosed = YES;
  tavelo::fakes::windows().push_back(self);
  return self;
}
- (void)setFrame:(NSRect)frame display:(BOOL)display {
  record(display ? "setFrame display" : "setFrame");
  self.frame = frame;
}
- (void)setFrameOrigin:(NSPoint)origin {
  record("setFrameOrigin");
  self.frame = {origin, self.frame.size};
}
- (void)orderFrontRegardless {
  record("orderFrontRegardless");
  self.visible = YES;
}
- (void)orderOut:(id)sender {
  record("orderOut");
  self.visible = NO;
}
- (void)makeKeyAndOrderFront:(id)sender {
  record("makeKeyAndOrderFront");
  self.visible = YES;
}
- (void)close {
  if ([self.delegate respondsToSelector:@selector(windowWillClose:)])
    [self.delegate windowWillClose:[NSNotification new]];
  record("close");
  self.visible = NO;
}
@end

@implementation NSWindowController
- (instancetype)initWithWindow:(NSWindow*)window {
  self.window = window;
  return self;
}
@end

@implementation NSMenuItem
+ (NSMenuItem*)separatorItem {
  NSMenuItem* const item = [NSMenuItem new];
  item.separatorItem = YES;
  return item;
}
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent {
  self.title = title;
  self.action = action;
  self.keyEquivalent = keyEquivalent;
  self.keyEquivalentModifierMask = NSEventModifierFlagCommand;
  return self;
}
@end

@implementation NSMenu {
  NSMutableArray<NSMenuItem*>* items_;
}
- (instancetype)init {
  items_ = [NSMutableArray array];
  self.autoenablesItems = YES;
  return self;
}
- (instancetype)initWithTitle:(NSString*)title {
  self = [self init];
  self.title = title;
  return self;
}
- (NSArray<NSMenuItem*>*)itemArray {
  return items_;
}
- (void)addItem:(NSMenuItem*)item {
  [items_ addObject:item];
}
@end

@implementation NSStatusItem
@end

@implementation NSStatusBar
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
  NSStatusItem* const item = [NSStatusItem new];
  item.length = length;
  item.button = [[NSStatusBarButton alloc] initWithFrame:NSZeroRect];
  tavelo::fakes::statusItems().push_back(item);
  return item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
  std::erase(tavelo::fakes::statusItems(), item);
}
@end

namespace tavelo::fakes {
namespace {

std::string nameOf(NSView* view, const std::vector<NamedView>& names) {
  const auto found = std::ranges::find(names, view, &NamedView::view);
  return found == names.end() ? "?" : found->name;
}

}  // namespace

std::string describe(NSSize size) {
  std::ostringstream text;
  text << size.width << "x" << size.height;
  return text.str();
}

std::string describe(NSRect rect) {
  std::ostringstream text;
  text << rect.origin.x << "," << rect.origin.y << " " << describe(rect.size);
  return text.str();
}

std::vector<NSArray<NSLayoutConstraint*>*>& activations() {
  static std::vector<NSArray<NSLayoutConstraint*>*> all;
  return all;
}

std::vector<NSWindow*>& windows() {
  static std::vector<NSWindow*> all;
  return all;
}

std::vector<NSStatusItem*>& statusItems() {
  static std::vector<NSStatusItem*> all;
  return all;
}

std::vector<std::string> describe(NSArray<NSLayoutConstraint*>* constraints,
                                  const std::vector<NamedView>& names) {
  std::vector<std::string> texts;
  for (NSLayoutConstraint* each in constraints) {
    std::ostringstream text;
    text << nameOf(each.first, names) << "." << utf8(each.firstAnchor) << " = ";
    if (each.second != nil) text << nameOf(each.second, names) << "." << utf8(each.secondAnchor) << " + ";
    text << each.constant;
    texts.push_back(text.str());
  }
  return texts;
}

void press(id target, SEL action) {
  ASSERT_NE(target, nil);
  const char* const name = reinterpret_cast<const Selector*>(action)->name;
  const auto method = implementationOf(classOf((__bridge void*)target), name);
  ASSERT_NE(method, nullptr) << name;
  reinterpret_cast<void (*)(id, SEL)>(method)(target, action);
}

NSScreen* screen(NSRect frame, NSRect visibleFrame) {
  NSScreen* const made = [NSScreen new];
  made.frame = frame;
  made.visibleFrame = visibleFrame;
  return made;
}

void serveApplication(NSArray<NSScreen*>* screens, NSScreen* mainScreen, NSPoint pointer) {
  answerWith("sharedApplication", [NSApplication new]);
  answerWith("systemStatusBar", [NSStatusBar new]);
  answerWith("screens", screens);
  answerWith("mainScreen", mainScreen);
  answerWith("mouseLocation", pointer);
  atEndOfTest([] {
    activations().clear();
    windows().clear();
    statusItems().clear();
  });
}

}  // namespace tavelo::fakes
