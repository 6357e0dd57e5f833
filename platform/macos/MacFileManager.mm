#include "platform/macos/MacFileManager.h"

#import <Foundation/Foundation.h>

#import "platform/macos/FoundationText.h"

namespace tavelo::macos {

std::optional<std::filesystem::path> MacFileManager::applicationSupportDirectory() const {
  NSString* const path = [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                              inDomains:NSUserDomainMask]
                             .firstObject.path;
  if (path.length == 0) return std::nullopt;
  return fromFoundation(path);
}

std::filesystem::path MacFileManager::temporaryDirectory() const {
  return fromFoundation(NSTemporaryDirectory());
}

}  // namespace tavelo::macos
