#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/Workspace.h"

namespace tavelo::platform {

/// Outcome of an accessibility call, with macOS's raw values.
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

/// A user-interface element of any application, such as a text field or a menu item. Opaque: only the backend
/// that made it looks inside. Shared; calls on it fail once the application has removed the element.
class AXUIElement {
 public:
  virtual ~AXUIElement() = default;
};
using AXUIElementRef = std::shared_ptr<AXUIElement>;

/// A range in a text, in UTF-16 code units, as an application reports it. Both numbers may be out of bounds
/// or negative.
struct AXRange {
  std::int64_t location = 0;
  std::int64_t length = 0;

  bool operator==(const AXRange&) const = default;
};

/// The value of an attribute; `monostate` stands for a value of any other type. Strings are UTF-8 and may be
/// ill-formed.
using AXValue =
    std::variant<std::monostate, std::string, AXRange, AXUIElementRef, std::vector<AXUIElementRef>>;

/// Names of attributes, and of the one action the program performs.
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

/// Options of `isProcessTrustedWithOptions` (on macOS `AXIsProcessTrustedWithOptions`).
struct AXTrustedCheckOptions {
  /// Ask the user for the permission if the process does not have it.
  bool prompt = false;
};

/// Reads and drives the user interfaces of other applications. Main thread. The backend bounds the time of
/// every call: if the application does not answer, the call returns `cannotComplete`.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// Whether this process may use accessibility now. Never prompts.
  virtual bool isProcessTrusted() = 0;

  /// The same answer; with `prompt` the user is also asked if it is false. Returns at once, before the user
  /// answers.
  virtual bool isProcessTrustedWithOptions(const AXTrustedCheckOptions& options) = 0;

  /// The element for the whole desktop; its `focusedUIElement` is the focused field of any application. Never
  /// null.
  virtual AXUIElementRef createSystemWide() = 0;

  /// The element of the application with this process. Never null, but calls on it may fail.
  virtual AXUIElementRef createApplication(ProcessIdentifier process) = 0;

  /// Reads an attribute into `value`, which stays unchanged unless the result is `success`. Titles are
  /// trimmed.
  virtual AXError copyAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                     AXValue& value) = 0;

  /// Writes an attribute. `success` means that the application says it took the value; some change nothing.
  virtual AXError setAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                    const AXValue& value) = 0;

  /// Performs an action such as `press`, which chooses a menu item.
  virtual AXError performAction(const AXUIElementRef& element, const std::string& action) = 0;
};

}  // namespace tavelo::platform
