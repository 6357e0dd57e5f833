#pragma once

#include <string>

#import <AppKit/AppKit.h>

/// Delivers one text when an application pastes it. Main thread.
@interface TaveloTextPromise : NSObject <NSPasteboardItemDataProvider>

/// `text` is UTF-8.
- (instancetype)initWithText:(std::string)text;

/// Whether the text was asked for.
@property(nonatomic, readonly) BOOL wasFetched;

@end
