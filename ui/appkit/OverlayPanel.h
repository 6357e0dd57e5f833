#pragma once

#import <AppKit/AppKit.h>

#import "ui/appkit/RecordingDotView.h"

namespace tavelo {

/// The overlay's views, without content. Main thread.
struct OverlayViews {
  RecordingDotView* dotView;
  NSTextField* titleLabel;
  NSTextField* detailLabel;
};

/// The overlay's views, not yet in a window.
OverlayViews makeOverlayViews();

/// The overlay's window, hidden and empty. It floats above all others, on every space and beside full-screen
/// applications, and never takes the focus.
NSPanel* makeOverlayPanel();

/// Puts a translucent, rounded body into `panel` and the views on it. Does nothing if `panel` is nil or has
/// no content view.
void buildOverlayContent(NSPanel* panel, const OverlayViews& views);

}  // namespace tavelo
