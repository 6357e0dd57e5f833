#pragma once

#include <string>
#include <vector>

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

#include "tests/macos/fakes/Fakes.h"

// What tests read and set of the fake windows besides what AppKit declares.

@interface NSColor ()
/// For example "labelColor".
@property(copy) NSString* name;
@end

@interface NSFont ()
@property(readwrite) CGFloat pointSize;
@property NSFontWeight weight;
@end

/// An image made from data that begin like an icns or a png file.
@interface NSImage ()
@property(strong) NSData* data;
@end

@interface NSAttributedString ()
@property(readwrite, copy) NSString* string;
/// Those of the whole text.
@property(copy) NSDictionary<NSAttributedStringKey, id>* attributes;
@end

@interface NSLayoutConstraint ()
@property(weak) NSView* first;
@property(copy) NSString* firstAnchor;
@property(weak) NSView* second;
@property(copy) NSString* secondAnchor;
@property CGFloat constant;
@end

@interface NSScreen ()
@property(readwrite) NSRect frame;
@property(readwrite) NSRect visibleFrame;
@end

@interface NSWindow ()
@property(readwrite) NSRect frame;
@property(readwrite, getter=isVisible) BOOL visible;
@property BOOL deferred;
@end

@interface NSMenuItem ()
@property(readwrite, getter=isSeparatorItem) BOOL separatorItem;
@end

@interface NSMenu ()
@property(copy) NSString* title;
@end

@interface NSAlert ()
@property(readwrite, strong) NSWindow* window;
@end

@interface NSTextView ()
@property(readwrite, strong) NSUndoManager* undoManager;
@end

@interface NSStatusItem ()
@property(readwrite, strong) NSStatusBarButton* button;
@end

/// The `maximumNumberOfLines` of a label that was made to wrap.
inline constexpr NSInteger wrappingLabel = 1000;

namespace tavelo::fakes {

/// Empty for nil.
inline std::string utf8(NSString* text) { return text == nil ? "" : text.UTF8String; }

/// For example "220x56", and "12,9 220x56".
std::string describe(NSSize size);
std::string describe(NSRect rect);

/// The name in `names` of each view that a constraint joins, for example "dot.leading = body.leading + 12".
struct NamedView {
  NSView* view;
  const char* name;
};
std::vector<std::string> describe(NSArray<NSLayoutConstraint*>* constraints,
                                  const std::vector<NamedView>& names);

/// The constraints of each activation so far in this test.
std::vector<NSArray<NSLayoutConstraint*>*>& activations();

/// The windows made in this test, and the status items that are in the menu bar.
std::vector<NSWindow*>& windows();
std::vector<NSStatusItem*>& statusItems();

/// Does what a click on an item or button does. Fails the test if nobody answers it.
void press(id target, SEL action);

/// Makes the class properties of AppKit answer for this test: one application, one status bar, these screens.
void serveApplication(NSArray<NSScreen*>* screens = @[], NSScreen* mainScreen = nil,
                      NSPoint pointer = {0, 0});
NSScreen* screen(NSRect frame, NSRect visibleFrame);

}  // namespace tavelo::fakes
