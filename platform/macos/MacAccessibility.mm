#import "platform/macos/MacAccessibility.h"

#include <chrono>
#include <utility>

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/macos/AccessibilityElement.h"
#import "platform/macos/FoundationText.h"
#include "unicode/Unicode.h"

namespace tavelo::macos {
namespace {

using platform::AXRange;
using platform::TurnBudget;
using Elements = std::vector<platform::AXUIElementRef>;

platform::AXError errorOf(::AXError error) {
  switch (error) {
    case kAXErrorSuccess:
    case kAXErrorIllegalArgument:
    case kAXErrorInvalidUIElement:
    case kAXErrorCannotComplete:
    case kAXErrorAttributeUnsupported:
    case kAXErrorActionUnsupported:
    case kAXErrorAPIDisabled:
    case kAXErrorNoValue:
      return static_cast<platform::AXError>(error);
    default:
      return platform::AXError::failure;
  }
}

/// Nil for an attribute that the program does not know.
CFStringRef attributeNamed(const std::string& name) {
  const std::pair<const char*, CFStringRef> attributes[] = {
      {platform::ax::focusedUIElement, kAXFocusedUIElementAttribute},
      {platform::ax::selectedText, kAXSelectedTextAttribute},
      {platform::ax::selectedTextRange, kAXSelectedTextRangeAttribute},
      {platform::ax::value, kAXValueAttribute},
      {platform::ax::menuBar, kAXMenuBarAttribute},
      {platform::ax::children, kAXChildrenAttribute},
      {platform::ax::title, kAXTitleAttribute},
  };
  for (const auto& [own, systems] : attributes) {
    if (name == own) return systems;
  }
  return nullptr;
}

::AXUIElementRef elementIn(const platform::AXUIElementRef& element) {
  const auto* const own = dynamic_cast<const AccessibilityElement*>(element.get());
  return own != nullptr ? own->get() : nullptr;
}

platform::AXUIElementRef retained(CFTypeRef element) {
  return std::make_shared<AccessibilityElement>(static_cast<::AXUIElementRef>(CFRetain(element)));
}

bool isElement(CFTypeRef value) { return value != nullptr && CFGetTypeID(value) == AXUIElementGetTypeID(); }

/// Nothing of the list if one member is no element.
platform::AXValue elementsOf(CFArrayRef list) {
  Elements elements;
  for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
    const CFTypeRef each = CFArrayGetValueAtIndex(list, i);
    if (!isElement(each)) return {};
    elements.push_back(retained(each));
  }
  return elements;
}

platform::AXValue valueOf(CFTypeRef value) {
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFStringGetTypeID()) return fromFoundation((__bridge NSString*)static_cast<CFStringRef>(value));
  if (type == AXUIElementGetTypeID()) return retained(value);
  if (type == CFArrayGetTypeID()) return elementsOf(static_cast<CFArrayRef>(value));
  CFRange range = {};
  if (type == AXValueGetTypeID() &&
      AXValueGetValue(static_cast<AXValueRef>(value), kAXValueTypeCFRange, &range)) {
    return AXRange{.location = range.location, .length = range.length};
  }
  return {};
}

/// The value as the system has it; nil if it has no such value.
id toSystem(const platform::AXValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return toFoundation(*text);
  if (const auto* range = std::get_if<AXRange>(&value)) {
    CFRange systems = {static_cast<CFIndex>(range->location), static_cast<CFIndex>(range->length)};
    return CFBridgingRelease(AXValueCreate(kAXValueTypeCFRange, &systems));
  }
  const auto* const element = std::get_if<platform::AXUIElementRef>(&value);
  return element != nullptr ? (__bridge id)elementIn(*element) : nil;
}

/// Makes a call that waits for the element's application, for as long as the turn allows.
template <class Call>
platform::AXError bounded(TurnBudget& budget, ::AXUIElementRef element, const Call& call) {
  if (element == nullptr) return platform::AXError::illegalArgument;
  const platform::Uptime allowed = budget.allowance();
  // Asked once: a moment later it may be zero, and that stands for the system's own time-out of seconds.
  if (TurnBudget::isTooLittle(allowed)) return platform::AXError::cannotComplete;
  const TurnBudget::Wait wait(budget);
  const std::chrono::duration<float> limit = allowed;
  AXUIElementSetMessagingTimeout(element, limit.count());
  return errorOf(call());
}

/// Reads an attribute. With `success` there is a value.
platform::AXError read(TurnBudget& budget, ::AXUIElementRef element, CFStringRef attribute,
                       __strong id& value) {
  CFTypeRef copied = nullptr;
  const auto error =
      bounded(budget, element, [&] { return AXUIElementCopyAttributeValue(element, attribute, &copied); });
  value = CFBridgingRelease(copied);
  return error == platform::AXError::success && value == nil ? platform::AXError::noValue : error;
}

}  // namespace

MacAccessibility::MacAccessibility(platform::MainQueue& mainQueue, const platform::Clock& clock)
    : budget_(mainQueue, clock) {}

bool MacAccessibility::isProcessTrusted() { return AXIsProcessTrusted() != 0; }

bool MacAccessibility::isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions& options) {
  NSDictionary* const choices = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @(options.prompt)};
  return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)choices) != 0;
}

platform::AXUIElementRef MacAccessibility::createSystemWide() {
  return std::make_shared<AccessibilityElement>(AXUIElementCreateSystemWide());
}

platform::AXUIElementRef MacAccessibility::createApplication(platform::ProcessIdentifier process) {
  return std::make_shared<AccessibilityElement>(AXUIElementCreateApplication(process));
}

platform::AXError MacAccessibility::copyAttributeValue(const platform::AXUIElementRef& element,
                                                       const std::string& attribute,
                                                       platform::AXValue& value) {
  const CFStringRef name = attributeNamed(attribute);
  if (name == nullptr) return platform::AXError::attributeUnsupported;
  @autoreleasepool {
    id result = nil;
    if (attribute == platform::ax::value) {
      // The bullets of a password field are not its text.
      const auto error = read(budget_, elementIn(element), kAXSubroleAttribute, result);
      if (error == platform::AXError::cannotComplete) return error;
      if (result != nil && CFEqual((__bridge CFTypeRef)result, kAXSecureTextFieldSubrole))
        return platform::AXError::attributeUnsupported;
    }
    const auto error = read(budget_, elementIn(element), name, result);
    if (error != platform::AXError::success) return error;
    value = valueOf((__bridge CFTypeRef)result);
  }
  auto* const text = std::get_if<std::string>(&value);
  if (attribute == platform::ax::title && text != nullptr) *text = std::string(unicode::trimmed(*text));
  return platform::AXError::success;
}

platform::AXError MacAccessibility::setAttributeValue(const platform::AXUIElementRef& element,
                                                      const std::string& attribute,
                                                      const platform::AXValue& value) {
  const CFStringRef name = attributeNamed(attribute);
  if (name == nullptr) return platform::AXError::attributeUnsupported;
  @autoreleasepool {
    const id systems = toSystem(value);
    if (systems == nil) return platform::AXError::illegalArgument;
    const auto target = elementIn(element);
    return bounded(budget_, target,
                   [&] { return AXUIElementSetAttributeValue(target, name, (__bridge CFTypeRef)systems); });
  }
}

platform::AXError MacAccessibility::performAction(const platform::AXUIElementRef& element,
                                                  const std::string& action) {
  if (action != platform::ax::press) return platform::AXError::actionUnsupported;
  const auto target = elementIn(element);
  return bounded(budget_, target, [&] { return AXUIElementPerformAction(target, kAXPressAction); });
}

}  // namespace tavelo::macos
