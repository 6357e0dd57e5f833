// What all declarations share. They say only what the product uses, and stand in for the system's headers
// where there are none.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
typedef double NSTimeInterval;
typedef unsigned short unichar;

struct CGPoint {
  CGFloat x, y;
};
struct CGSize {
  CGFloat width, height;
};
struct CGRect {
  CGPoint origin;
  CGSize size;
};
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return {{x, y}, {width, height}};
}
static inline NSSize NSMakeSize(CGFloat width, CGFloat height) { return {width, height}; }
static inline NSRect NSInsetRect(NSRect rect, CGFloat x, CGFloat y) {
  return {{rect.origin.x + x, rect.origin.y + y}, {rect.size.width - 2 * x, rect.size.height - 2 * y}};
}
static const NSSize NSZeroSize = {0, 0};
static const NSRect NSZeroRect = {{0, 0}, {0, 0}};

// Availability and ownership. A set of options is a number, as in the system's headers.
#define API_AVAILABLE(version) __attribute__((availability(macos, introduced = version)))
#define API_DEPRECATED(version) __attribute__((availability(macos, introduced = 10.0, deprecated = version)))
#define NS_ENUM(type, name) \
  enum name : type name;    \
  enum name : type
#define NS_OPTIONS(type, name) \
  type name;                   \
  enum : name
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_CONSUMED __attribute__((cf_consumed))
#define CF_BRIDGED(class) __attribute__((objc_bridge(class)))
