#import "ui/appkit/RecordingDotView.h"

#include "ui/Measures.h"

@implementation RecordingDotView

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self) _active = YES;
  return self;
}

- (nullable instancetype)initWithCoder:(NSCoder*)coder {
  self = [super initWithCoder:coder];
  if (self) _active = YES;
  return self;
}

- (void)setActive:(BOOL)active {
  _active = active;
  self.needsDisplay = YES;
}

- (void)drawRect:(NSRect)dirty {
  constexpr CGFloat inset = tavelo::measures::overlayDotInset;
  [(self.active ? NSColor.systemRedColor : NSColor.systemGreenColor) setFill];
  [[NSBezierPath bezierPathWithOvalInRect:NSInsetRect(self.bounds, inset, inset)] fill];
}

@end
