#pragma once

#include <string>
#include <string_view>

#import <AppKit/AppKit.h>

#include "ui/Placement.h"

namespace tavelo {

/// UTF-8 to Foundation's text. Each ill-formed sequence reads as U+FFFD. Any thread.
NSString* toAppKit(std::string_view text);

/// The text in UTF-8. Any thread.
std::string fromAppKit(NSString* text);

inline NSSize toAppKit(Size size) { return NSMakeSize(size.width, size.height); }

/// The frame in a container of `containerHeight` whose coordinates grow upwards.
NSRect toAppKit(const Rectangle& frame, double containerHeight);

/// Lets the program end while `alert` is open. By default neither the quit command nor the end of the session
/// gets through a modal window.
void letProgramEnd(NSAlert* alert);

/// The height of the screen in whose lower left corner AppKit's coordinates begin; 0 without any screen.
/// Main thread.
double originScreenHeight();

}  // namespace tavelo
