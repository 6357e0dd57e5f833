#import "platform/macos/FoundationText.h"

#include "unicode/Unicode.h"

namespace tavelo::macos {

NSString* toFoundation(std::string_view text) {
  NSString* converted = [[NSString alloc] initWithData:toData(unicode::wellFormed(text))
                                              encoding:NSUTF8StringEncoding];
  return converted != nil ? converted : @"";
}

std::string fromFoundation(NSString* text) {
  // Lossy, since half a surrogate pair has no UTF-8 and would lose the whole text.
  return fromData([text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES]);
}

NSData* toData(std::string_view bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

std::string fromData(NSData* data) {
  if (data.length == 0) return {};
  return {static_cast<const char*>(data.bytes), data.length};
}

}  // namespace tavelo::macos
