#include "tests/macos/fakes/Pasteboard.h"

#include <utility>
#include <vector>

#import "platform/macos/FoundationText.h"

using tavelo::macos::fromFoundation;

NSPasteboardType const NSPasteboardTypeString = @"public.utf8-plain-text";

@implementation NSPasteboardItem {
  std::vector<std::pair<std::string, NSData*>> data_;
  id<NSPasteboardItemDataProvider> provider_;
}
- (NSArray<NSPasteboardType>*)types {
  NSMutableArray<NSPasteboardType>* const types = [[NSMutableArray alloc] init];
  for (const auto& [type, data] : data_) [types addObject:fakeString(type)];
  return types;
}
- (BOOL)setData:(NSData*)data forType:(NSPasteboardType)type {
  const std::string name = fromFoundation(type);
  for (auto& [known, old] : data_) {
    if (known == name) {
      old = data;
      return YES;
    }
  }
  data_.emplace_back(name, data);
  return YES;
}
- (BOOL)setDataProvider:(id<NSPasteboardItemDataProvider>)provider
               forTypes:(NSArray<NSPasteboardType>*)types {
  provider_ = provider;
  for (NSPasteboardType type in types) data_.emplace_back(fromFoundation(type), nil);
  return YES;
}
- (NSData*)dataForType:(NSPasteboardType)type {
  const std::string name = fromFoundation(type);
  for (int attempt = 0; attempt < 2; ++attempt) {
    for (const auto& [known, data] : data_) {
      if (known == name && data != nil) return data;
    }
    if (attempt == 0) [provider_ pasteboard:nil item:self provideDataForType:type];
  }
  return nil;
}
@end

@implementation NSPasteboard
- (NSInteger)clearContents {
  self.pasteboardItems = @[];
  return ++_changeCount;
}
- (BOOL)writeObjects:(NSArray<NSPasteboardItem*>*)objects {
  NSMutableArray<NSPasteboardItem*>* const all = [[NSMutableArray alloc] init];
  for (NSPasteboardItem* item in self.pasteboardItems) [all addObject:item];
  for (NSPasteboardItem* item in objects) [all addObject:item];
  self.pasteboardItems = all;
  return YES;
}
@end

namespace tavelo::fakes {

NSPasteboard* servePasteboard() {
  NSPasteboard* const general = [[NSPasteboard alloc] init];
  general.pasteboardItems = @[];
  answerWith("generalPasteboard", general);
  return general;
}

void copyElsewhere(NSPasteboard* general,
                   const std::vector<std::pair<std::string, std::string>>& representations) {
  [general clearContents];
  NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
  for (const auto& [type, data] : representations)
    [item setData:macos::toData(data) forType:fakeString(type)];
  [general writeObjects:@[ item ]];
}

std::string pasteElsewhere(NSPasteboard* general) {
  return macos::fromData([general.pasteboardItems.firstObject dataForType:NSPasteboardTypeString]);
}

}  // namespace tavelo::fakes
