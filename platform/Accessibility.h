#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/Workspace.h"

namespace tavelo::platform {

/// Outcome of an accessibility call; raw values are the platform's.
enum class AXError : std::int32_t {
  success = 0,
  failure = -25200,
  illegalArgument = -25201,
  invalidUIElement = -25202,
  cannotComplete = -25204,
  attributeUnsupported = -25205,
  actionUnsupported = -25206,
  apiDisabled = -25211,
  noValue = -25212,
};

/// A user-interface element of any application. Opaque; only the backend that made it looks inside. Shared;
/// it may outlive what it stands for, and calls on it then fail.
class AXUIElement {
 public:
  virtual ~AXUIElement() = default;
};
using AXUIElementRef = std::shared_ptr<AXUIElement>;

/// A range in a text, in UTF-16 code units, as an application reports it: both may be out of bounds or
/// negative.
struct AXRange {
  std::int64_t location = 0;
  std::int64_t length = 0;

  bool operator==(const AXRange&) const = default;
};

/// What an attribute can hold; `monostate` stands for a value of any other kind. Strings are UTF-8 and may be
/// ill-formed.
using AXValue =
    std::variant<std::monostate, std::string, AXRange, AXUIElementRef, std::vector<AXUIElementRef>>;

namespace ax {
inline constexpr const char* focusedUIElement = "AXFocusedUIElement";
inline constexpr const char* selectedText = "AXSelectedText";
inline constexpr const char* selectedTextRange = "AXSelectedTextRange";
inline constexpr const char* value = "AXValue";
inline constexpr const char* menuBar = "AXMenuBar";
inline constexpr const char* children = "AXChildren";
inline constexpr const char* title = "AXTitle";
inline constexpr const char* press = "AXPress";
}  // namespace ax

/// What `AXIsProcessTrustedWithOptions` may be told.
struct AXTrustedCheckOptions {
  /// Show the platform's accessibility prompt when the process is not trusted.
  bool prompt = false;
};

/// Reads and drives the user interfaces of other applications. Main thread. Every call is bounded in time by
/// the backend: an application that does not answer yields `cannotComplete`.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// Whether this process may use accessibility now. Shows nothing.
  virtual bool isProcessTrusted() = 0;

  /// The same answer; with `prompt`, an untrusted process also gets the platform's prompt. Returns at once.
  virtual bool isProcessTrustedWithOptions(const AXTrustedCheckOptions& options) = 0;

  /// The element that stands for the whole desktop; "AXFocusedUIElement" is read from it. Never null.
  virtual AXUIElementRef createSystemWide() = 0;

  /// The element of the application with this process; never null, though calls on it may fail.
  virtual AXUIElementRef createApplication(ProcessIdentifier process) = 0;

  /// Reads an attribute into `value`, which is untouched unless the result is `success`. Titles come trimmed.
  virtual AXError copyAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                     AXValue& value) = 0;

  /// Writes an attribute. `success` means that the application took it, as far as can be known.
  virtual AXError setAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                    const AXValue& value) = 0;

  /// Performs an action such as "AXPress".
  virtual AXError performAction(const AXUIElementRef& element, const std::string& action) = 0;
};

}  // namespace tavelo::platform
