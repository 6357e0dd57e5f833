#import "ui/appkit/OverlayPanel.h"

#import <QuartzCore/QuartzCore.h>

#include "ui/Texts.h"
#import "ui/appkit/AppKitValues.h"

namespace tavelo {
namespace {

NSVisualEffectView* makeBody() {
  NSVisualEffectView* body = [[NSVisualEffectView alloc] initWithFrame:NSZeroRect];
  body.translatesAutoresizingMaskIntoConstraints = NO;
  body.material = NSVisualEffectMaterialHUDWindow;
  body.blendingMode = NSVisualEffectBlendingModeBehindWindow;
  body.state = NSVisualEffectStateActive;
  body.wantsLayer = YES;
  body.layer.cornerRadius = measures::overlayCornerRadius;
  body.layer.masksToBounds = YES;
  return body;
}

void styleTitle(NSTextField* label) {
  label.font = [NSFont systemFontOfSize:measures::overlayTitleFont weight:NSFontWeightSemibold];
  label.textColor = NSColor.labelColor;
  label.lineBreakMode = NSLineBreakByTruncatingTail;
}

// AppKit discourages cells, but only they can be told whether text wraps and scrolls.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
NSCell* cellOf(NSTextField* label) { return label.cell; }
#pragma clang diagnostic pop

void styleDetail(NSTextField* label) {
  label.font = [NSFont systemFontOfSize:measures::overlayDetailFont weight:NSFontWeightRegular];
  label.textColor = NSColor.secondaryLabelColor;
  label.alignment = NSTextAlignmentRight;
  // The end of a long preview is what was said last.
  label.lineBreakMode = NSLineBreakByTruncatingHead;
  label.maximumNumberOfLines = 1;
  NSCell* cell = cellOf(label);
  cell.usesSingleLineMode = YES;
  cell.wraps = NO;
  cell.scrollable = NO;
}

NSArray<NSLayoutConstraint*>* constraintsFor(NSView* content, NSView* body, const OverlayViews& views) {
  NSView* dot = views.dotView;
  NSView* title = views.titleLabel;
  NSView* detail = views.detailLabel;
  constexpr CGFloat inset = measures::overlaySideInset;
  return @[
    [body.leadingAnchor constraintEqualToAnchor:content.leadingAnchor],
    [body.trailingAnchor constraintEqualToAnchor:content.trailingAnchor],
    [body.topAnchor constraintEqualToAnchor:content.topAnchor],
    [body.bottomAnchor constraintEqualToAnchor:content.bottomAnchor],

    [dot.leadingAnchor constraintEqualToAnchor:body.leadingAnchor constant:inset],
    [dot.centerYAnchor constraintEqualToAnchor:body.centerYAnchor],
    [dot.widthAnchor constraintEqualToConstant:measures::overlayDotSize],
    [dot.heightAnchor constraintEqualToConstant:measures::overlayDotSize],

    [title.leadingAnchor constraintEqualToAnchor:dot.trailingAnchor constant:measures::overlayDotSpacing],
    [title.trailingAnchor constraintEqualToAnchor:body.trailingAnchor constant:-inset],
    [title.topAnchor constraintEqualToAnchor:body.topAnchor constant:measures::overlayTitleTop],

    [detail.leadingAnchor constraintEqualToAnchor:title.leadingAnchor],
    [detail.trailingAnchor constraintEqualToAnchor:title.trailingAnchor],
    [detail.topAnchor constraintEqualToAnchor:title.bottomAnchor constant:measures::overlayLineSpacing],
    [detail.heightAnchor constraintEqualToConstant:measures::overlayDetailHeight]
  ];
}

}  // namespace

OverlayViews makeOverlayViews() {
  return {[[RecordingDotView alloc] initWithFrame:NSZeroRect],
          [NSTextField labelWithString:toAppKit(texts::recording)], [NSTextField labelWithString:@""]};
}

NSPanel* makeOverlayPanel() {
  const NSSize size = toAppKit(measures::compactSize);
  // The mask is final from the start: a panel that becomes non-activating later still takes the focus.
  NSPanel* panel =
      [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                                 styleMask:NSWindowStyleMaskBorderless | NSWindowStyleMaskNonactivatingPanel
                                   backing:NSBackingStoreBuffered
                                     defer:NO];
  panel.minSize = size;
  panel.maxSize = size;
  panel.level = NSFloatingWindowLevel;
  panel.collectionBehavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
  panel.opaque = NO;
  panel.backgroundColor = NSColor.clearColor;
  panel.hasShadow = YES;
  return panel;
}

void buildOverlayContent(NSPanel* panel, const OverlayViews& views) {
  NSView* content = panel.contentView;
  if (content == nil) return;
  NSVisualEffectView* body = makeBody();
  for (NSView* view in @[ views.dotView, views.titleLabel, views.detailLabel ]) {
    view.translatesAutoresizingMaskIntoConstraints = NO;
  }
  styleTitle(views.titleLabel);
  styleDetail(views.detailLabel);
  [content addSubview:body];
  for (NSView* view in @[ views.dotView, views.titleLabel, views.detailLabel ]) [body addSubview:view];
  [NSLayoutConstraint activateConstraints:constraintsFor(content, body, views)];
}

}  // namespace tavelo
