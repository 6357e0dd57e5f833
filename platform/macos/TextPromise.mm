#import "platform/macos/TextPromise.h"

#include <utility>

#import "platform/macos/FoundationText.h"

@implementation TaveloTextPromise {
  std::string _text;
}

- (instancetype)initWithText:(std::string)text {
  self = [super init];
  if (self) _text = std::move(text);
  return self;
}

- (void)pasteboard:(NSPasteboard*)pasteboard
                  item:(NSPasteboardItem*)item
    provideDataForType:(NSPasteboardType)type {
  _wasFetched = YES;
  [item setData:tavelo::macos::toData(_text) forType:type];
}

@end
