#pragma once

#import <AppKit/AppKit.h>

#include "tests/macos/fakes/Fakes.h"

@interface NSPasteboard ()
@property(readwrite) NSInteger changeCount;
@property(nullable, readwrite, copy) NSArray<NSPasteboardItem*>* pasteboardItems;
@end

namespace tavelo::fakes {

/// Installs a general pasteboard for this test. It keeps what is written and asks for promised data only when
/// it is read.
NSPasteboard* _Nonnull servePasteboard();

}  // namespace tavelo::fakes
