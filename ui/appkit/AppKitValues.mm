#import "ui/appkit/AppKitValues.h"

#include "ui/appkit/Screens.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

Rectangle fromAppKit(NSRect frame, double containerHeight) {
  return flipped({frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}, containerHeight);
}

}  // namespace

NSString* toAppKit(std::string_view text) {
  const std::string whole = unicode::wellFormed(text);
  NSData* bytes = [NSData dataWithBytes:whole.data() length:whole.size()];
  NSString* converted = [[NSString alloc] initWithData:bytes encoding:NSUTF8StringEncoding];
  return converted != nil ? converted : @"";
}

std::string fromAppKit(NSString* text) {
  // Lossy, since half a surrogate pair has no UTF-8 and would lose the whole text.
  NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  if (bytes.length == 0) return {};
  return {static_cast<const char*>(bytes.bytes), bytes.length};
}

NSRect toAppKit(const Rectangle& frame, double containerHeight) {
  const Rectangle upwards = flipped(frame, containerHeight);
  return NSMakeRect(upwards.x, upwards.y, upwards.width, upwards.height);
}

void letProgramEnd(NSAlert* alert) { alert.window.preventsApplicationTerminationWhenModal = NO; }

double originScreenHeight() { return NSScreen.screens.firstObject.frame.size.height; }

ScreenLayout currentScreenLayout() {
  const double height = originScreenHeight();
  const auto geometry = [height](NSScreen* screen) {
    return ScreenGeometry{fromAppKit(screen.frame, height), fromAppKit(screen.visibleFrame, height)};
  };
  ScreenLayout layout;
  for (NSScreen* screen in NSScreen.screens) layout.screens.push_back(geometry(screen));
  if (NSScreen* main = NSScreen.mainScreen) layout.mainScreen = geometry(main);
  const NSPoint pointer = NSEvent.mouseLocation;
  layout.pointer = {pointer.x, height - pointer.y};
  return layout;
}

}  // namespace tavelo
