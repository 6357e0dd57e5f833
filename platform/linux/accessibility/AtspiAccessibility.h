#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/UserNotifications.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AccessibilityTrust.h"
#include "platform/linux/accessibility/ApplicationDirectory.h"
#include "platform/linux/accessibility/FieldReturn.h"
#include "platform/linux/accessibility/FocusSearch.h"
#include "platform/linux/accessibility/FrameSearch.h"
#include "platform/linux/accessibility/MenuAccess.h"
#include "platform/linux/accessibility/TextAccess.h"
#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

class OwnField;

/// Accessibility of the Linux desktop: reads and drives other applications over the accessibility bus.
///
/// Main thread, with an application object. A call waits at most 250 ms, and all calls of one turn of the
/// main queue together take at most 300 ms, with what they do about the answers. Calls beyond that, and calls
/// to an application that still owes an answer, fail at once.
class AtspiAccessibility final : public platform::Accessibility {
 public:
  /// Connects to the desktop without waiting. `hasRawKeyEvents` tells whether keys can be watched
  /// system-wide. All references must outlive this object.
  AtspiAccessibility(platform::MainQueue& mainQueue, const platform::Clock& clock, ActiveWindow& windows,
                     platform::UserNotifications& notifications, std::function<bool()> hasRawKeyEvents);

  bool isProcessTrusted() override;
  bool isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions& options) override;
  platform::AXUIElementRef createSystemWide() override;
  platform::AXUIElementRef createApplication(platform::ProcessIdentifier process) override;
  platform::AXError copyAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                       platform::AXValue& value) override;
  platform::AXError setAttributeValue(const platform::AXUIElementRef& element, const std::string& attribute,
                                      const platform::AXValue& value) override;
  platform::AXError performAction(const platform::AXUIElementRef& element,
                                  const std::string& action) override;

  /// As `FocusSearch::passwordHasFocus`.
  bool passwordHasFocus() { return focusSearch_.passwordHasFocus(); }

  /// Why the process is trusted or not, for a check of the desktop.
  AccessibilityTrust::Facts facts() { return trust_.facts(); }

  /// Tells the desktop's applications to be accessible; returns at once. Those that run already may have to
  /// be started again.
  void enable() { bus_.enable(); }

  /// The other processes that accessibility can reach now.
  std::vector<platform::ProcessIdentifier> reachableProcesses();

  /// Keeps the toolkit from an accessibility bus that hangs. Call it before there is a window. Waits as
  /// `AccessibilityBus::wouldKeepWaiting`, with the address that the display server names.
  void keepToolkitFromHungBus(const std::optional<std::string>& displayServersAddress);

  /// Posts a notification if the program cannot work in this kind of session.
  void announceUnsuitableSession() { trust_.announceUnsuitableSession(); }

  /// To be called when a window of an application was asked to come to the front: the field whose write was
  /// refused just before gets the focus.
  void cameToFront(platform::ProcessIdentifier process, WindowIdentifier window);

  /// To be asked before a paste goes out, as `FieldReturn::mayPaste`. Also false while a password field has
  /// the focus: what was dictated into another field must not end there.
  bool mayPaste();

  /// Called once when `mayPaste` begins to say no: the text can be put nowhere.
  std::function<void(FieldReturn::Nowhere)> onNowhere;

 private:
  platform::AXError write(const ElementReference& element, const std::string& attribute,
                          const platform::AXValue& value);
  static platform::AXError write(const OwnField& field, const std::string& attribute,
                                 const platform::AXValue& value);
  Result<platform::AXValue> attributeOf(const platform::AXUIElement& element, const std::string& attribute);

  bool ownWindowIsActive();

  ActiveWindow& windows_;
  AccessibilityBus bus_;
  ApplicationDirectory directory_;
  FrameSearch frameSearch_;
  FocusSearch focusSearch_;
  TextAccess textAccess_;
  FieldReturn fieldReturn_;
  MenuAccess menuAccess_;
  AccessibilityTrust trust_;
};

}  // namespace tavelo::linuxdesktop
