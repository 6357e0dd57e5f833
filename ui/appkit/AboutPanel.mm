#import "ui/appkit/AboutPanel.h"

#import <QuartzCore/QuartzCore.h>

#include "ui/Texts.h"
#import "ui/appkit/AppKitValues.h"

namespace tavelo {
namespace {

NSRect accessoryFrame(const Rectangle& frame) { return toAppKit(frame, measures::aboutAccessorySize.height); }

NSImageView* portraitView(NSImage* portrait) {
  NSImageView* view = [[NSImageView alloc] initWithFrame:accessoryFrame(measures::aboutPortraitFrame)];
  view.image = portrait;
  view.imageScaling = NSImageScaleProportionallyUpOrDown;
  view.wantsLayer = YES;
  view.layer.cornerRadius = measures::aboutPortraitFrame.width / 2;
  view.layer.masksToBounds = YES;
  return view;
}

NSTextField* makerLabel(const platform::Names& names) {
  NSTextField* label = [NSTextField wrappingLabelWithString:toAppKit(texts::aboutMaker(names))];
  label.frame = accessoryFrame(measures::aboutMakerFrame);
  label.font = [NSFont systemFontOfSize:measures::aboutMakerFont];
  label.textColor = NSColor.labelColor;
  label.alignment = NSTextAlignmentLeft;
  return label;
}

NSTextView* websiteLinkView(id<NSTextViewDelegate> delegate) {
  NSTextView* view = [[NSTextView alloc] initWithFrame:accessoryFrame(measures::aboutLinkFrame)];
  view.editable = NO;
  view.selectable = YES;
  view.drawsBackground = NO;
  view.textContainerInset = NSZeroSize;
  view.delegate = delegate;
  NSMutableParagraphStyle* centred = [[NSMutableParagraphStyle alloc] init];
  centred.alignment = NSTextAlignmentCenter;
  NSDictionary<NSAttributedStringKey, id>* attributes = @{
    NSFontAttributeName : [NSFont systemFontOfSize:measures::aboutLinkFont],
    NSForegroundColorAttributeName : NSColor.systemBlueColor,
    NSUnderlineStyleAttributeName : [NSNumber numberWithInteger:NSUnderlineStyleSingle],
    NSParagraphStyleAttributeName : centred,
    NSLinkAttributeName : toAppKit(product::siteAddress)
  };
  NSAttributedString* link = [[NSAttributedString alloc] initWithString:toAppKit(product::siteDomain)
                                                             attributes:attributes];
  [view.textStorage setAttributedString:link];
  return view;
}

NSView* aboutAccessoryView(const platform::Names& names, NSImage* portrait,
                           id<NSTextViewDelegate> linkDelegate) {
  const NSSize size = toAppKit(measures::aboutAccessorySize);
  NSView* view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
  if (portrait != nil) [view addSubview:portraitView(portrait)];
  [view addSubview:makerLabel(names)];
  [view addSubview:websiteLinkView(linkDelegate)];
  return view;
}

}  // namespace

NSImage* imageResource(const platform::Resources& resources, const char* name, const char* type) {
  const auto data = resources.data(name, type);
  if (!data) return nil;
  return [[NSImage alloc] initWithData:[NSData dataWithBytes:data->data() length:data->size()]];
}

void showAboutPanel(const platform::Names& names, NSImage* icon, NSImage* portrait,
                    id<NSTextViewDelegate> linkDelegate) {
  NSAlert* alert = [[NSAlert alloc] init];
  alert.messageText = toAppKit(texts::programName);
  alert.informativeText = toAppKit(texts::aboutProgram(names));
  alert.alertStyle = NSAlertStyleInformational;
  if (icon != nil) alert.icon = icon;
  alert.accessoryView = aboutAccessoryView(names, portrait, linkDelegate);
  [alert addButtonWithTitle:toAppKit(texts::closeAbout)];
  letProgramEnd(alert);
  [alert runModal];
}

}  // namespace tavelo
