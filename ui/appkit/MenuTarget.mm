#import "ui/appkit/MenuTarget.h"

#include <utility>

#import "ui/appkit/AppKitValues.h"

namespace {

/// Takes a copy, since the action may end the target.
void run(std::function<void()> action) {
  if (action) action();
}

}  // namespace

@implementation TaveloMenuTarget {
  tavelo::MenuActions _actions;
}

- (instancetype)initWithActions:(tavelo::MenuActions)actions {
  self = [super init];
  if (self) _actions = std::move(actions);
  return self;
}

- (void)disconnect {
  _actions = {};
}

- (void)toggleDictation {
  run(_actions.toggleDictation);
}

- (void)toggleInsertMode {
  run(_actions.toggleInsertMode);
}

- (void)showPermissions {
  run(_actions.showPermissions);
}

- (void)testInsert {
  run(_actions.testInsert);
}

- (void)insertLastText {
  run(_actions.insertLastText);
}

- (void)showAbout {
  run(_actions.showAbout);
}

- (void)quit {
  run(_actions.quit);
}

- (void)menuWillOpen:(NSMenu*)menu {
  _menuIsOpen = YES;
}

- (void)menuDidClose:(NSMenu*)menu {
  _menuIsOpen = NO;
}

- (BOOL)textView:(NSTextView*)view clickedOnLink:(id)link atIndex:(NSUInteger)index {
  NSObject* value = link;
  if (![value isKindOfClass:[NSString class]]) return NO;
  NSString* address = static_cast<NSString*>(value);
  const auto openLink = _actions.openLink;
  if (!openLink || [NSURL URLWithString:address] == nil) return NO;
  openLink(tavelo::fromAppKit(address));
  return YES;
}

@end
