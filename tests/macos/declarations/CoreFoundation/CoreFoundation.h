#pragma once

#include <Foundation/Base.h>

NS_ASSUME_NONNULL_BEGIN

typedef unsigned char Boolean;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef double CFTimeInterval;
typedef double CFAbsoluteTime;
typedef struct {
  CFIndex location, length;
} CFRange;

typedef const void* CFTypeRef CF_BRIDGED(id);
typedef const struct CF_BRIDGED(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED(NSArray) __CFArray* CFArrayRef;
typedef const struct CF_BRIDGED(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct CF_BRIDGED(id) __CFRunLoopSource* CFRunLoopSourceRef;
typedef struct CF_BRIDGED(id) __CFRunLoopTimer* CFRunLoopTimerRef;
typedef struct CF_BRIDGED(id) __CFMachPort* CFMachPortRef;
typedef CFStringRef CFRunLoopMode;

extern "C" {

extern const CFAllocatorRef _Nullable kCFAllocatorDefault;

CFTypeRef _Nonnull CFRetain(CFTypeRef _Nonnull object);
void CFRelease(CFTypeRef _Nonnull object);
CFTypeID CFGetTypeID(CFTypeRef object);
Boolean CFEqual(CFTypeRef a, CFTypeRef b);
CFTypeID CFStringGetTypeID(void);
CFTypeID CFArrayGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* _Nullable CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

typedef CFTypeRef CFPropertyListRef;
CFPropertyListRef _Nullable CFPreferencesCopyAppValue(CFStringRef key,
                                                      CFStringRef application) CF_RETURNS_RETAINED;

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void);

extern const CFRunLoopMode kCFRunLoopCommonModes;
extern const CFRunLoopMode kCFRunLoopDefaultMode;
CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopWakeUp(CFRunLoopRef loop);
typedef enum CFRunLoopRunResult : int32_t {
  kCFRunLoopRunFinished = 1,
  kCFRunLoopRunTimedOut = 3
} CFRunLoopRunResult;
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      Boolean returnAfterSourceHandled);

typedef struct {
  CFIndex version;
  void* _Nullable info;
  const void* _Nullable (*_Nullable retain)(const void* _Nullable info);
  void (*_Nullable release)(const void* _Nullable info);
  CFStringRef _Nullable (*_Nullable copyDescription)(const void* _Nullable info);
  Boolean (*_Nullable equal)(const void* _Nullable a, const void* _Nullable b);
  CFHashCode (*_Nullable hash)(const void* _Nullable info);
  void (*_Nullable schedule)(void* _Nullable info, CFRunLoopRef _Nullable loop, CFRunLoopMode _Nullable mode);
  void (*_Nullable cancel)(void* _Nullable info, CFRunLoopRef _Nullable loop, CFRunLoopMode _Nullable mode);
  void (*_Nullable perform)(void* _Nullable info);
} CFRunLoopSourceContext;
CFRunLoopSourceRef _Nullable CFRunLoopSourceCreate(CFAllocatorRef _Nullable allocator, CFIndex order,
                                                   CFRunLoopSourceContext* context) CF_RETURNS_RETAINED;
void CFRunLoopSourceSignal(CFRunLoopSourceRef source);
void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source);
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef _Nullable source, CFRunLoopMode mode);
void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef _Nullable source, CFRunLoopMode mode);

typedef struct {
  CFIndex version;
  void* _Nullable info;
  const void* _Nullable (*_Nullable retain)(const void* _Nullable info);
  void (*_Nullable release)(const void* _Nullable info);
  CFStringRef _Nullable (*_Nullable copyDescription)(const void* _Nullable info);
} CFRunLoopTimerContext;
typedef void (*CFRunLoopTimerCallBack)(CFRunLoopTimerRef timer, void* _Nullable info);
CFRunLoopTimerRef _Nullable CFRunLoopTimerCreate(
    CFAllocatorRef _Nullable allocator, CFAbsoluteTime fireDate, CFTimeInterval interval, CFOptionFlags flags,
    CFIndex order, CFRunLoopTimerCallBack callback,
    CFRunLoopTimerContext* _Nullable context) CF_RETURNS_RETAINED;
void CFRunLoopAddTimer(CFRunLoopRef loop, CFRunLoopTimerRef _Nullable timer, CFRunLoopMode mode);
void CFRunLoopTimerSetNextFireDate(CFRunLoopTimerRef timer, CFAbsoluteTime fireDate);
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer);

CFRunLoopSourceRef _Nullable CFMachPortCreateRunLoopSource(CFAllocatorRef _Nullable allocator,
                                                           CFMachPortRef _Nullable port,
                                                           CFIndex order) CF_RETURNS_RETAINED;
void CFMachPortInvalidate(CFMachPortRef port);

}  // extern "C"

NS_ASSUME_NONNULL_END
