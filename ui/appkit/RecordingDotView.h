#pragma once

#import <AppKit/AppKit.h>

/// The overlay's status dot: a disc, red while active, else green. Main thread.
@interface RecordingDotView : NSView

/// True at first. Each assignment redraws the dot.
@property(nonatomic, getter=isActive) BOOL active;

@end
