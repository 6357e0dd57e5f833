#pragma once

#include <string>
#include <string_view>

#import <Foundation/Foundation.h>

namespace tavelo::macos {

/// UTF-8 to Foundation's text. Each ill-formed sequence reads as U+FFFD. Any thread.
NSString* toFoundation(std::string_view text);

/// The text in UTF-8; empty for nil. Any thread.
std::string fromFoundation(NSString* text);

/// The bytes. Any thread.
NSData* toData(std::string_view bytes);
std::string fromData(NSData* data);

}  // namespace tavelo::macos
