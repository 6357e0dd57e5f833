#import "tests/macos/fakes/Accessibility.h"

#include "tests/macos/fakes/Fakes.h"

using tavelo::fakes::describe;
using tavelo::fakes::desktop;
using tavelo::fakes::recordFunction;

@implementation FakeElement
@end
@implementation FakeAXValue
@end

namespace tavelo::fakes {

Desktop& desktop() {
  static auto* const instance = new Desktop;
  return *instance;
}

}  // namespace tavelo::fakes

namespace {

std::string text(CFStringRef string) { return ((__bridge NSString*)string).UTF8String; }

/// Calls the application of an element. Returns the error for `name`.
AXError call(FakeElement* element, const std::string& name) {
  desktop().onCall(element);
  const auto error = element->errors.find(name);
  return error == element->errors.end() ? kAXErrorSuccess : error->second;
}

CFTypeID typeOf(Class type) { return reinterpret_cast<CFTypeID>((__bridge void*)type); }

}  // namespace

CFTypeID CFGetTypeID(CFTypeRef object) {
  const id own = (__bridge id)object;
  for (Class each : {[NSString class], [NSArray class], [FakeElement class], [FakeAXValue class]}) {
    if ([own isKindOfClass:each]) return typeOf(each);
  }
  return 0;
}
CFTypeID CFStringGetTypeID(void) { return typeOf([NSString class]); }
CFTypeID CFArrayGetTypeID(void) { return typeOf([NSArray class]); }
CFTypeID AXUIElementGetTypeID(void) { return typeOf([FakeElement class]); }
CFTypeID AXValueGetTypeID(void) { return typeOf([FakeAXValue class]); }
CFIndex CFArrayGetCount(CFArrayRef array) { return static_cast<CFIndex>(((__bridge NSArray*)array).count); }
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  return (__bridge void*)((__bridge NSArray*)array)[static_cast<NSUInteger>(index)];
}

const CFStringRef kAXFocusedUIElementAttribute = (__bridge CFStringRef) @"AXFocusedUIElement";
const CFStringRef kAXSelectedTextAttribute = (__bridge CFStringRef) @"AXSelectedText";
const CFStringRef kAXSelectedTextRangeAttribute = (__bridge CFStringRef) @"AXSelectedTextRange";
const CFStringRef kAXValueAttribute = (__bridge CFStringRef) @"AXValue";
const CFStringRef kAXMenuBarAttribute = (__bridge CFStringRef) @"AXMenuBar";
const CFStringRef kAXChildrenAttribute = (__bridge CFStringRef) @"AXChildren";
const CFStringRef kAXTitleAttribute = (__bridge CFStringRef) @"AXTitle";
const CFStringRef kAXSubroleAttribute = (__bridge CFStringRef) @"AXSubrole";
const CFStringRef kAXSecureTextFieldSubrole = (__bridge CFStringRef) @"AXSecureTextField";
const CFStringRef kAXPressAction = (__bridge CFStringRef) @"AXPress";
const CFStringRef kAXTrustedCheckOptionPrompt = (__bridge CFStringRef) @"AXTrustedCheckOptionPrompt";

Boolean AXIsProcessTrusted(void) {
  recordFunction("AXIsProcessTrusted");
  return desktop().isTrusted;
}
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
  NSNumber* const prompt = ((__bridge NSDictionary*)options)[@"AXTrustedCheckOptionPrompt"];
  recordFunction("AXIsProcessTrustedWithOptions", prompt.boolValue ? "prompt" : "");
  return desktop().isTrusted;
}
AXUIElementRef AXUIElementCreateSystemWide(void) {
  return (__bridge_retained AXUIElementRef)desktop().systemWide;
}
AXUIElementRef AXUIElementCreateApplication(pid_t process) {
  recordFunction("AXUIElementCreateApplication", process);
  if (process < 0) return nullptr;
  FakeElement* const own = desktop().application;
  return (__bridge_retained AXUIElementRef)(own != nil ? own : [FakeElement new]);
}
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
  ((__bridge FakeElement*)element)->timeout = seconds;
  return kAXErrorSuccess;
}
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value) {
  FakeElement* const own = (__bridge FakeElement*)element;
  const AXError error = call(own, text(attribute));
  if (error == kAXErrorSuccess) *value = (__bridge_retained CFTypeRef)own->attributes[text(attribute)];
  return error;
}
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value) {
  FakeElement* const own = (__bridge FakeElement*)element;
  const AXError error = call(own, text(attribute));
  if (error == kAXErrorSuccess) own->attributes[text(attribute)] = (__bridge id)value;
  return error;
}
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
  recordFunction("AXUIElementPerformAction", text(action));
  return call((__bridge FakeElement*)element, text(action));
}

AXValueRef AXValueCreate(AXValueType type, const void* value) {
  FakeAXValue* const made = [FakeAXValue new];
  made.type = type;
  made.range = *static_cast<const CFRange*>(value);
  return (__bridge_retained AXValueRef)made;
}
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
  FakeAXValue* const own = (__bridge FakeAXValue*)value;
  if (own.type != type) return 0;
  *static_cast<CFRange*>(result) = own.range;
  return 1;
}
