// Strings, data and numbers that work, because the product computes with them.
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>

#include "tests/macos/fakes/Fakes.h"
#include "tests/macos/runtime/Runtime.h"

extern "C" void fakeDealloc(void* object);

@implementation NSObject
+ (instancetype)alloc {
  return (__bridge_transfer id)tavelo::fakes::makeInstance((__bridge tavelo::fakes::Class*)self);
}
+ (instancetype)new {
  return [[self alloc] init];
}
+ (Class)class {
  return self;
}
- (instancetype)init {
  return self;
}
- (void)dealloc {
  fakeDealloc((__bridge void*)self);
}
- (id)copy {
  return self;
}
- (Class)class {
  return (__bridge Class)tavelo::fakes::classOf((__bridge void*)self);
}
- (BOOL)isEqual:(id)object {
  return self == object;
}
- (BOOL)isKindOfClass:(Class)type {
  return tavelo::fakes::isKindOf((__bridge void*)self, (__bridge tavelo::fakes::Class*)type);
}
- (BOOL)respondsToSelector:(SEL)selector {
  const auto* const name = reinterpret_cast<const tavelo::fakes::Selector*>(selector)->name;
  return tavelo::fakes::implementationOf(tavelo::fakes::classOf((__bridge void*)self), name) != nullptr;
}
@end

@interface NSBlock : NSObject
@end
@implementation NSBlock
@end

/// All strings answer with their UTF-16 code units; the subclasses say where they lie.
@interface NSString ()
- (std::u16string)units;
@end

@interface FakeString : NSString {
 @public
  std::u16string units_;
}
@end

@implementation NSString
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length {
  FakeString* const string = [[FakeString alloc] init];
  string->units_.assign(reinterpret_cast<const char16_t*>(characters), length);
  return string;
}
- (std::u16string)units {
  return {};
}
- (instancetype)initWithData:(NSData*)data encoding:(NSUInteger)encoding {
  const std::string bytes(static_cast<const char*>(data.bytes), data.length);
  return encoding == NSUTF8StringEncoding && tavelo::unicode::isWellFormed(bytes) ? fakeString(bytes) : nil;
}
- (NSData*)dataUsingEncoding:(NSUInteger)encoding allowLossyConversion:(BOOL)lossy {
  const std::string bytes = fakeUtf8(self.units);
  // Half a surrogate pair has no bytes.
  if (encoding != NSUTF8StringEncoding || (!lossy && !tavelo::unicode::isWellFormed(bytes))) return nil;
  return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}
- (NSUInteger)length {
  return self.units.size();
}
- (const char*)UTF8String {
  // Lives as long as the text is the same, which is enough for tests.
  static auto* const texts = new std::map<std::u16string, std::string>;
  const std::u16string units = self.units;
  return texts->try_emplace(units, fakeUtf8(units)).first->second.c_str();
}
- (BOOL)isEqual:(id)object {
  return [object isKindOfClass:[NSString class]] && static_cast<NSString*>(object).units == self.units;
}
@end

@implementation FakeString
- (std::u16string)units {
  return units_;
}
@end

/// A literal, as the compiler lays it out.
@interface NSConstantString : NSString {
  uint32_t flags_, length_, size_, hash_;
  const void* data_;
}
@end
@implementation NSConstantString
- (std::u16string)units {
  if ((flags_ & 3) == 2) return {static_cast<const char16_t*>(data_), length_};
  const auto* const ascii = static_cast<const char*>(data_);
  return {ascii, ascii + length_};
}
@end

/// A literal of up to eight ASCII characters, which the compiler packs into the pointer.
@interface NSTinyString : NSString
@end
@implementation NSTinyString
- (std::u16string)units {
  const auto packed = reinterpret_cast<uintptr_t>((__bridge void*)self);
  std::u16string units;
  for (unsigned i = 0; i < ((packed >> 3) & 0x1f); ++i)
    units.push_back(static_cast<char16_t>((packed >> (57 - i * 7)) & 0x7f));
  return units;
}
@end

@implementation NSData {
  std::string bytes_;
}
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
  NSData* const data = [[NSData alloc] init];
  data->bytes_.assign(static_cast<const char*>(bytes), length);
  return data;
}
- (NSUInteger)length {
  return bytes_.size();
}
- (const void*)bytes {
  return bytes_.data();
}
@end

@implementation NSNumber {
  NSInteger value_;
}
+ (NSNumber*)numberWithInteger:(NSInteger)value {
  NSNumber* const number = [[NSNumber alloc] init];
  number->value_ = value;
  return number;
}
+ (NSNumber*)numberWithBool:(BOOL)value {
  return [self numberWithInteger:value];
}
+ (NSNumber*)numberWithInt:(int)value {
  return [self numberWithInteger:value];
}
- (BOOL)boolValue {
  return value_ != 0;
}
- (NSInteger)integerValue {
  return value_;
}
- (BOOL)isEqual:(id)object {
  return [object isKindOfClass:[NSNumber class]] && static_cast<NSNumber*>(object)->value_ == value_;
}
@end

@implementation NSURL {
  NSString* text_;
}
+ (instancetype)URLWithString:(NSString*)text {
  if (std::string(text.UTF8String).find(' ') != std::string::npos) return nil;
  NSURL* const url = [[NSURL alloc] init];
  url->text_ = text;
  return url;
}
- (NSString*)path {
  return text_;
}
@end

@implementation NSError
@end
@implementation NSException
@end
@implementation NSNotification
@end
@implementation NSLocale
@end
@implementation NSBundle
@end
@implementation NSProcessInfo
@end

@interface FakeObserver : NSObject {
 @public
  std::string name;
  void (^block)(NSNotification*);
}
@end
@implementation FakeObserver
@end

static std::vector<FakeObserver*>& observers() {
  static auto* const all = new std::vector<FakeObserver*>;
  return *all;
}

@implementation NSNotificationCenter
+ (NSNotificationCenter*)defaultCenter {
  return [self new];
}
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
  EXPECT_EQ((__bridge void*)queue, nullptr) << "a queue's blocks would wait for a modal alert";
  FakeObserver* const observer = [FakeObserver new];
  observer->name = name.UTF8String;
  observer->block = [block copy];
  observers().push_back(observer);
  return observer;
}
- (void)removeObserver:(id)observer {
  std::erase(observers(), observer);
}
@end

void tavelo::fakes::notify(const std::string& name) {
  for (FakeObserver* each : std::vector(observers())) {
    if (each->name == name) each->block([NSNotification new]);
  }
}

const CFAllocatorRef kCFAllocatorDefault = nullptr;
CFTypeRef CFRetain(CFTypeRef object) { return objc_retain(const_cast<void*>(object)); }
void CFRelease(CFTypeRef object) {
  if (object == nullptr) abort();
  objc_release(const_cast<void*>(object));
}
Boolean CFEqual(CFTypeRef a, CFTypeRef b) { return [(__bridge id)a isEqual:(__bridge id)b]; }

NSString* fakeString(const std::string& utf8) {
  std::u16string units;
  for (std::size_t offset = 0; offset < utf8.size();) {
    const char32_t scalar = tavelo::unicode::nextScalar(utf8, offset);
    if (scalar > 0xFFFF) units.push_back(static_cast<char16_t>(0xD7C0 + (scalar >> 10)));
    units.push_back(static_cast<char16_t>(scalar > 0xFFFF ? 0xDC00 + (scalar & 0x3FF) : scalar));
  }
  return [NSString stringWithCharacters:reinterpret_cast<const unichar*>(units.data()) length:units.size()];
}

std::string fakeUtf8(const std::u16string& units) {
  std::string text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t scalar = units[i];
    if ((scalar & 0xFC00) == 0xD800 && i + 1 < units.size() && (units[i + 1] & 0xFC00) == 0xDC00)
      scalar = ((scalar - 0xD7C0) << 10) + (units[++i] & 0x3FF);
    tavelo::unicode::appendScalar(text, scalar);
  }
  return text;
}
