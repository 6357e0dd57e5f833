// What the other tests rely on without showing it: that a leak is noticed, and which handler an exception
// meets.
#include "tests/macos/fakes/Fakes.h"

@interface Sample : NSObject
@property(nonatomic, strong) id other;
@end
@implementation Sample
@end

namespace tavelo::fakes {
namespace {

class RuntimeTest : public FakeFrameworks {};

TEST_F(RuntimeTest, CycleAndMissingReleaseAreCounted) {
  const auto before = liveObjects();
  Sample* sample = [Sample new];
  sample.other = sample;
  CFTypeRef extra = CFBridgingRetain([Sample new]);
  __weak Sample* weak = sample;
  sample = nil;
  EXPECT_EQ(liveObjects(), before + 2);
  objc_release(const_cast<void*>(extra));
  ((Sample*)weak).other = nil;
}

TEST_F(RuntimeTest, ExceptionIsCaughtByItsClass) {
  NSException* const thrown = [NSException new];
  thrown.reason = @"no input";
  NSString* reason = nil;
  @try {
    @try {
      objc_exception_throw((__bridge void*)thrown);
    } @catch (NSError* error) {
      reason = @"wrong class";
    }
  } @catch (NSException* exception) {
    reason = exception.reason;
  }
  EXPECT_STREQ([reason UTF8String], "no input");
}

}  // namespace
}  // namespace tavelo::fakes
