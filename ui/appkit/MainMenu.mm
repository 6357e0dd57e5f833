#import "ui/appkit/MainMenu.h"

#include "ui/Texts.h"
#import "ui/appkit/AppKitValues.h"

/// AppKit's responders answer these, but no header of it declares them.
@protocol TaveloUndoing
- (void)undo:(nullable id)sender;
- (void)redo:(nullable id)sender;
@end

namespace tavelo {
namespace {

/// Without a target, the view with the focus gets the action.
NSMenuItem* makeItem(const char* title, SEL action, NSString* key) {
  return [[NSMenuItem alloc] initWithTitle:toAppKit(title) action:action keyEquivalent:key];
}

NSMenu* makeEditMenu() {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:toAppKit(texts::edit)];
  NSArray<NSMenuItem*>* items = @[
    // A capital is with Shift.
    makeItem(texts::undo, @selector(undo:), @"z"), makeItem(texts::redo, @selector(redo:), @"Z"),
    NSMenuItem.separatorItem, makeItem(texts::cut, @selector(cut:), @"x"),
    makeItem(texts::copy, @selector(copy:), @"c"), makeItem(texts::paste, @selector(paste:), @"v"),
    makeItem(texts::selectAll, @selector(selectAll:), @"a")
  ];
  for (NSMenuItem* item in items) [menu addItem:item];
  return menu;
}

NSMenuItem* makeTitle(NSMenu* submenu) {
  NSMenuItem* item = makeItem(texts::programName, nullptr, @"");
  item.submenu = submenu;
  return item;
}

}  // namespace

NSMenu* makeMainMenu() {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:toAppKit(texts::programName)];
  // The first one is always taken for the application's own menu.
  [menu addItem:makeTitle([[NSMenu alloc] initWithTitle:toAppKit(texts::programName)])];
  [menu addItem:makeTitle(makeEditMenu())];
  return menu;
}

}  // namespace tavelo
