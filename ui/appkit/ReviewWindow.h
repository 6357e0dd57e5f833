#pragma once

#include <functional>

#import <AppKit/AppKit.h>

namespace tavelo {

/// What the review window reports. Empty ones are not called.
struct ReviewActions {
  /// The user pressed "Chèn". The window is still open.
  std::function<void()> insert;
  /// The window closes without that, by "Hủy" or its close button.
  std::function<void()> dismiss;
};

}  // namespace tavelo

/// Owns the review window, which it builds hidden, and is its delegate. Main thread.
@interface TaveloReviewWindow : NSWindowController <NSWindowDelegate>

- (instancetype)initWithActions:(tavelo::ReviewActions)actions;

@property(nonatomic, readonly) NSTextView* textView;

/// Offers `text` for editing, in the middle of the screen, and takes the focus.
- (void)showText:(NSString*)text;

/// Closes the window after an insertion: `dismiss` is not called.
- (void)closeAfterInsertion;

/// Closes the window for good. Nothing is reported any more.
- (void)disconnect;

@end
