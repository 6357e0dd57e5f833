#pragma once

#include <CoreFoundation/CoreFoundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef struct CF_BRIDGED(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED(id) __CGEventSource* CGEventSourceRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef uint16_t CGKeyCode;
typedef uint64_t CGEventMask;

typedef NS_OPTIONS(uint64_t, CGEventFlags) {
  kCGEventFlagMaskAlphaShift = 0x10000,
  kCGEventFlagMaskShift = 0x20000,
  kCGEventFlagMaskControl = 0x40000,
  kCGEventFlagMaskAlternate = 0x80000,
  kCGEventFlagMaskCommand = 0x100000,
  kCGEventFlagMaskSecondaryFn = 0x800000,
};
typedef NS_ENUM(uint32_t, CGEventType) {
  kCGEventKeyDown = 10,
  kCGEventKeyUp = 11,
  kCGEventFlagsChanged = 12,
  kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
  kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
};
typedef NS_ENUM(uint32_t, CGEventTapLocation) { kCGHIDEventTap = 0, kCGSessionEventTap = 1 };
typedef NS_ENUM(uint32_t, CGEventTapPlacement) { kCGHeadInsertEventTap = 0, kCGTailAppendEventTap = 1 };
typedef NS_ENUM(uint32_t, CGEventTapOptions) {
  kCGEventTapOptionDefault = 0,
  kCGEventTapOptionListenOnly = 1
};
typedef NS_ENUM(int32_t, CGEventSourceStateID) {
  kCGEventSourceStatePrivate = -1,
  kCGEventSourceStateCombinedSessionState = 0,
  kCGEventSourceStateHIDSystemState = 1,
};
typedef NS_ENUM(uint32_t, CGEventField) {
  kCGKeyboardEventAutorepeat = 8,
  kCGKeyboardEventKeycode = 9,
  kCGEventSourceUnixProcessID = 41,
  kCGEventSourceUserData = 42,
};

typedef CGEventRef _Nullable (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                                   void* _Nullable user);

typedef struct {
  uint32_t eventTapID;
  CGEventTapLocation tapPoint;
  CGEventTapOptions options;
  CGEventMask eventsOfInterest;
  pid_t tappingProcess;
  pid_t processBeingTapped;
  bool enabled;
  float minUsecLatency, avgUsecLatency, maxUsecLatency;
} CGEventTapInformation;
typedef NS_ENUM(int32_t, CGError) { kCGErrorSuccess = 0, kCGErrorFailure = 1000 };

extern "C" {

CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                                         CGEventTapOptions options, CGEventMask mask,
                                         CGEventTapCallBack callback,
                                         void* _Nullable user) CF_RETURNS_RETAINED;
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);
bool CGPreflightListenEventAccess(void);
CGError CGGetEventTapList(uint32_t size, CGEventTapInformation* _Nullable taps, uint32_t* _Nullable count);

CGEventSourceRef _Nullable CGEventSourceCreate(CGEventSourceStateID state) CF_RETURNS_RETAINED;
CGEventFlags CGEventSourceFlagsState(CGEventSourceStateID state);
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode key,
                                                bool down) CF_RETURNS_RETAINED;
CGEventFlags CGEventGetFlags(CGEventRef _Nullable event);
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
int64_t CGEventGetIntegerValueField(CGEventRef _Nullable event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef _Nullable event, CGEventField field, int64_t value);
void CGEventPost(CGEventTapLocation location, CGEventRef _Nullable event);
void CGEventPostToPid(pid_t process, CGEventRef _Nullable event);

CFDictionaryRef _Nullable CGSessionCopyCurrentDictionary(void) CF_RETURNS_RETAINED;

}  // extern "C"

NS_ASSUME_NONNULL_END
