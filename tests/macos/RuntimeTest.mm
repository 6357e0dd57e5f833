// The run time itself, since everything else here relies on it.
#include <gmock/gmock.h>

#include "tests/macos/fakes/Fakes.h"

@interface Sample : NSObject
@property(nonatomic, copy) NSString* name;
@property(nonatomic, strong) id other;
@property(nonatomic, weak) id back;
@property(nonatomic) NSRect frame;
@property(nonatomic, copy) void (^action)(int);
- (double)scale:(double)x by:(int)n of:(NSSize)size named:(NSString*)name;
- (NSRect)rectFor:(id)object;
@end
@implementation Sample
@end
@interface Derived : Sample {
 @public
  std::string text;
}
@end
@implementation Derived
@end

namespace tavelo::fakes {
namespace {

using testing::ElementsAre;

class RuntimeTest : public FakeFrameworks {};

TEST_F(RuntimeTest, PropertiesBlocksAndWeakReferencesHoldAsLongAsTheyShould) {
  __weak Sample* seen = nil;
  int sum = 0;
  @autoreleasepool {
    Derived* const sample = [[Derived alloc] init];
    Sample* const child = [Sample new];
    seen = child;
    sample->text = "long enough to live on the heap, which the destructor frees";
    sample.name = @"chào";
    sample.other = child;
    child.back = sample;
    sample.frame = NSMakeRect(1, 2, 3, 4);
    __block int* target = &sum;
    child.action = ^(int n) {
      *target += n + static_cast<int>(sample.frame.size.height);
    };
    child.action(3);
    EXPECT_EQ(child.back, sample);
    child.action = nil;
    EXPECT_STREQ([sample.name UTF8String], "chào");
  }
  EXPECT_EQ(seen, nil);
  EXPECT_EQ(sum, 7);
}

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

TEST_F(RuntimeTest, UnimplementedMethodsAreRecordedAndAnswered) {
  Sample* const sample = [Sample new];
  answer("rectFor:", [](Call& call) { call.give(NSMakeRect(1, 2, 3, 4)); });
  answer("scale:by:of:named:",
         [](Call& call) { call.give(call.argument<double>(0) * call.argument<int>(1)); });
  EXPECT_EQ([sample scale:1.5 by:-2 of:NSMakeSize(3, 4) named:@"ô"], -3.0);
  EXPECT_EQ([sample rectFor:nil].size.height, 4);
  EXPECT_THAT(takeCalls(),
              ElementsAre("-[Sample scale:1.5 by:-2 of:{3, 4} named:\"ô\"]", "-[Sample rectFor:nil]"));
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

TEST_F(RuntimeTest, LiteralsCollectionsAndEnumerationWork) {
  NSString* joined = @"";
  for (NSString* each in @[ @"a", @"một hai ba", @"longer than eight" ])
    joined = fakeString(std::string(joined.UTF8String) + each.UTF8String);
  EXPECT_STREQ(joined.UTF8String, "amột hai balonger than eight");
  NSDictionary<NSString*, NSNumber*>* const numbers = @{@"one" : @1, @"yes" : @YES};
  EXPECT_EQ(numbers[@"one"].integerValue, 1);
  EXPECT_EQ(numbers[@"two"], nil);
}

}  // namespace

}  // namespace tavelo::fakes
