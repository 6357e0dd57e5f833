#pragma once

#include <functional>
#include <map>
#include <string>

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

/// An element of another application.
@interface FakeElement : NSObject {
 @public
  /// By name, what reading and writing give.
  std::map<std::string, id> attributes;
  std::map<std::string, AXError> errors;
  /// How long the next calls may last, in seconds.
  float timeout;
}
@end

/// A value of type CFRange, or of another type.
@interface FakeAXValue : NSObject
@property AXValueType type;
@property CFRange range;
@end

namespace tavelo::fakes {

/// What the system answers in a test.
struct Desktop {
  bool isTrusted = false;
  FakeElement* systemWide = nil;
  /// Any application; a new element each time if nil.
  FakeElement* application = nil;
  /// Called by each call that waits for an application, before it answers.
  std::function<void(FakeElement*)> onCall = [](FakeElement*) {};
};
Desktop& desktop();

}  // namespace tavelo::fakes
