#pragma once

#import <Foundation/Foundation.h>

/// A source of the main run loop.
@interface FakeRunLoopSource : NSObject {
 @public
  CFRunLoopSourceContext context_;
  bool isSignalled_, isAdded_;
}
@end
