#include "platform/macos/MacResources.h"

#import <Foundation/Foundation.h>

#import "platform/macos/FoundationText.h"

namespace tavelo::macos {

std::optional<std::string> MacResources::data(const std::string& name, const std::string& type) const {
  NSURL* const file = [NSBundle.mainBundle URLForResource:toFoundation(name)
                                            withExtension:toFoundation(type)];
  if (file == nil) return std::nullopt;
  NSData* const bytes = [NSData dataWithContentsOfURL:file];
  if (bytes == nil) return std::nullopt;
  return fromData(bytes);
}

}  // namespace tavelo::macos
