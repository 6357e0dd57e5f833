#pragma once

#include <utility>
#include <vector>

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

/// As another application does: copies an item of these types and bytes, and pastes plain text.
void copyElsewhere(NSPasteboard* _Nonnull general,
                   const std::vector<std::pair<std::string, std::string>>& representations);
std::string pasteElsewhere(NSPasteboard* _Nonnull general);

}  // namespace tavelo::fakes
