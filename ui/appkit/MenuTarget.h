#pragma once

#include <functional>
#include <string>

#import <AppKit/AppKit.h>

namespace tavelo {

/// What the items of the status menu do. Empty ones do nothing.
struct MenuActions {
  std::function<void()> toggleDictation;
  std::function<void()> toggleInsertMode;
  std::function<void()> showPermissions;
  std::function<void()> testInsert;
  std::function<void()> insertLastText;
  std::function<void()> showAbout;
  std::function<void()> quit;
  /// Gets the address of a link that the user clicked, if it is valid.
  std::function<void(const std::string&)> openLink;
};

}  // namespace tavelo

/// The target of the status menu's items, and the delegate of the menu and of the About panel's link. Main
/// thread.
@interface TaveloMenuTarget : NSObject <NSMenuDelegate, NSTextViewDelegate>

- (instancetype)initWithActions:(tavelo::MenuActions)actions;

/// The items do nothing any more.
- (void)disconnect;

/// Whether the user has the menu open.
@property(nonatomic, readonly) BOOL menuIsOpen;

- (void)toggleDictation;
- (void)toggleInsertMode;
- (void)showPermissions;
- (void)testInsert;
- (void)insertLastText;
- (void)showAbout;
- (void)quit;

@end
