#pragma once

#import <AppKit/AppKit.h>

#include "platform/Names.h"
#include "platform/Resources.h"

namespace tavelo {

/// A picture that comes with the program; nil if there is none or it cannot be read. Main thread.
NSImage* imageResource(const platform::Resources& resources, const char* name, const char* type);

/// Shows the modal panel that says what the program is and who made it; returns when the user has closed it.
/// Without an icon (nil) it shows the application's, without a portrait that place stays empty.
/// `linkDelegate` hears of clicks on the link. Main thread.
void showAboutPanel(const platform::Names& names, NSImage* icon, NSImage* portrait,
                    id<NSTextViewDelegate> linkDelegate);

}  // namespace tavelo
