#pragma once

#include <CoreGraphics/CoreGraphics.h>

NS_ASSUME_NONNULL_BEGIN

typedef const struct CF_BRIDGED(id) __AXUIElement* AXUIElementRef;
typedef const struct CF_BRIDGED(id) __AXValue* AXValueRef;

typedef NS_ENUM(int32_t, AXError) {
  kAXErrorSuccess = 0,
  kAXErrorFailure = -25200,
  kAXErrorIllegalArgument = -25201,
  kAXErrorInvalidUIElement = -25202,
  kAXErrorCannotComplete = -25204,
  kAXErrorAttributeUnsupported = -25205,
  kAXErrorActionUnsupported = -25206,
  kAXErrorAPIDisabled = -25211,
  kAXErrorNoValue = -25212,
};
typedef NS_ENUM(uint32_t, AXValueType) { kAXValueTypeCFRange = 4 };

extern "C" {

extern const CFStringRef kAXFocusedUIElementAttribute;
extern const CFStringRef kAXSelectedTextAttribute;
extern const CFStringRef kAXSelectedTextRangeAttribute;
extern const CFStringRef kAXValueAttribute;
extern const CFStringRef kAXMenuBarAttribute;
extern const CFStringRef kAXChildrenAttribute;
extern const CFStringRef kAXTitleAttribute;
extern const CFStringRef kAXSubroleAttribute;
extern const CFStringRef kAXSecureTextFieldSubrole;
extern const CFStringRef kAXPressAction;
extern const CFStringRef kAXTrustedCheckOptionPrompt;

Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);
AXUIElementRef AXUIElementCreateSystemWide(void) CF_RETURNS_RETAINED;
AXUIElementRef AXUIElementCreateApplication(pid_t process) CF_RETURNS_RETAINED;
CFTypeID AXUIElementGetTypeID(void);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef _Nullable* _Nonnull value);
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);

CFTypeID AXValueGetTypeID(void);
AXValueRef _Nullable AXValueCreate(AXValueType type, const void* value) CF_RETURNS_RETAINED;
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

}  // extern "C"

NS_ASSUME_NONNULL_END
