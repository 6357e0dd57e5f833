#pragma once

#include <functional>
#include <vector>

#import <AppKit/AppKit.h>

@interface NSEvent ()
@property(readwrite) NSEventType type;
@property(readwrite) NSEventModifierFlags modifierFlags;
@property(readwrite) NSTimeInterval timestamp;
@property(readwrite) unsigned short keyCode;
@property(readwrite, getter=isARepeat) BOOL ARepeat;
@property(readwrite, assign) CGEventRef CGEvent;
@end

namespace tavelo::fakes {

/// A key event as the system passes it on.
struct FakeKey {
  CGEventType type = kCGEventKeyDown;
  int64_t code = 0;
  uint64_t flags = 0;
  bool isRepeat = false;
  /// How long ago the key moved, in seconds.
  double age = 0;
  int64_t userData = 0;
};

/// The system's keyboard for one test: event taps, global monitors and posted keys.
class Keyboard final {
 public:
  Keyboard();
  ~Keyboard();

  bool refuses = false;
  /// Monitors then see nothing.
  bool ownWindowIsActive = false;
  /// The keys posted anywhere; each is then delivered as well.
  std::vector<FakeKey> posted;

  /// Gives the key to the taps, then to the monitors.
  void deliver(const FakeKey& key);
  /// Switches the taps off and tells them so.
  void timeOut();
};

}  // namespace tavelo::fakes
