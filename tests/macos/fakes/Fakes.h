#pragma once

#include <string>
#include <type_traits>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/macos/runtime/Recorder.h"
#include "tests/macos/runtime/Runtime.h"
#include "unicode/Unicode.h"

// What the tests with fake frameworks share. A fake class has an @implementation, which gives it the declared
// properties; each further method is only recorded, or answered by `fakes::answer`. A test sets a read-only
// property through a class extension in a header of this folder, which its implementation sees too.

/// A string of UTF-8, and back.
NSString* fakeString(const std::string& utf8);
std::string fakeUtf8(const std::u16string& units);

@interface NSError ()
@property(readwrite, copy) NSString* localizedDescription;
@end

@interface NSBundle ()
@property(readwrite, copy) NSString* bundleIdentifier;
@end

@interface NSProcessInfo ()
@property(readwrite) NSTimeInterval systemUptime;
@end

@interface NSException ()
@property(readwrite, copy) NSString* reason;
@end

namespace tavelo::fakes {

/// Answers each call with the same number or struct, or with an object, which lives until the end of the
/// test.
template <class T>
requires(!std::is_convertible_v<T, id>) void answerWith(const std::string& selector, T value) {
  answer(selector, [value](Call& call) { call.give(value); });
}
inline void answerWith(const std::string& selector, id object) {
  answer(selector, [object](Call& call) { call.give((__bridge void*)object); });
}

/// Posts a notification to its observers, on this thread.
void notify(const std::string& name);

/// A test against fake frameworks. Fails if an object outlives it: a reference too many, or a cycle.
class FakeFrameworks : public testing::Test {
 protected:
  FakeFrameworks() : pool_(objc_autoreleasePoolPush()), before_(liveObjects()) {}
  ~FakeFrameworks() override {
    resetRecorder();
    objc_autoreleasePoolPop(pool_);
    EXPECT_EQ(liveObjects(), before_) << describeLiveObjects();
  }

 private:
  void* const pool_;
  const std::size_t before_;
};

}  // namespace tavelo::fakes
