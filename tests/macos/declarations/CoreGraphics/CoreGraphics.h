#pragma once

#include <CoreFoundation/CoreFoundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef struct CF_BRIDGED(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED(id) __CGEventSource* CGEventSourceRef;
typedef struct __CGEventTapProxy* CGEventTapProxy;
typedef uint16_t CGKeyCode;
typedef uint64_t CGEventMask;

typedef NS_OPTIONS(uint64_t, CGEventFlags) {
  kCGEventFlagMaskShift = 0x20000,
  kCGEventFlagMaskCommand = 0x100000,
};
typedef NS_ENUM(uint32_t, CGEventType) {
  kCGEventKeyDown = 10,
  kCGEventKeyUp = 11,
  kCGEventFlagsChanged = 12,
  kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
};
typedef NS_ENUM(uint32_t, CGEventTapLocation) { kCGHIDEventTap = 0 };
typedef NS_ENUM(uint32_t, CGEventTapPlacement);
typedef NS_ENUM(uint32_t, CGEventTapOptions);
typedef NS_ENUM(int32_t, CGEventSourceStateID) { kCGEventSourceStateHIDSystemState = 1 };
typedef NS_ENUM(uint32_t, CGEventField) { kCGEventSourceUserData = 42 };

typedef CGEventRef _Nullable (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                                   void* _Nullable user);

typedef struct {
  pid_t tappingProcess;
  bool enabled;
} CGEventTapInformation;
typedef NS_ENUM(int32_t, CGError) { kCGErrorSuccess = 0 };

extern "C" {

CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                                         CGEventTapOptions options, CGEventMask mask,
                                         CGEventTapCallBack callback,
                                         void* _Nullable user) CF_RETURNS_RETAINED;
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGPreflightListenEventAccess(void);
CGError CGGetEventTapList(uint32_t size, CGEventTapInformation* _Nullable taps, uint32_t* _Nullable count);

CGEventSourceRef _Nullable CGEventSourceCreate(CGEventSourceStateID state) CF_RETURNS_RETAINED;
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode key,
                                                bool down) CF_RETURNS_RETAINED;
CGEventFlags CGEventGetFlags(CGEventRef _Nullable event);
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
int64_t CGEventGetIntegerValueField(CGEventRef _Nullable event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef _Nullable event, CGEventField field, int64_t value);
void CGEventPost(CGEventTapLocation location, CGEventRef _Nullable event);

CFDictionaryRef _Nullable CGSessionCopyCurrentDictionary(void) CF_RETURNS_RETAINED;

}  // extern "C"

NS_ASSUME_NONNULL_END
