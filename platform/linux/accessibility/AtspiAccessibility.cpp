#include "platform/linux/accessibility/AtspiAccessibility.h"

#include <utility>
#include <variant>

#include <unistd.h>

#include "platform/linux/accessibility/OwnField.h"
#include "platform/linux/accessibility/ToolkitBridge.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;
using platform::AXUIElementRef;
using platform::AXValue;

class SystemWideElement final : public platform::AXUIElement {};

class ApplicationElement final : public platform::AXUIElement {
 public:
  explicit ApplicationElement(platform::ProcessIdentifier process) : process_(process) {}
  platform::ProcessIdentifier process() const { return process_; }

 private:
  platform::ProcessIdentifier process_;
};

}  // namespace

AtspiAccessibility::AtspiAccessibility(platform::MainQueue& mainQueue, const platform::Clock& clock,
                                       ActiveWindow& windows, platform::UserNotifications& notifications,
                                       std::function<bool()> hasRawKeyEvents)
    : windows_(windows),
      bus_(mainQueue, clock),
      directory_(bus_),
      frameSearch_(windows, directory_, bus_),
      focusSearch_(windows, frameSearch_, bus_),
      textAccess_(bus_),
      fieldReturn_(bus_, directory_, textAccess_, windows, clock),
      menuAccess_(frameSearch_, bus_),
      trust_(bus_, notifications, std::move(hasRawKeyEvents)) {
  fieldReturn_.onNowhere = [this](FieldReturn::Nowhere why) {
    if (onNowhere) onNowhere(why);
  };
}

void AtspiAccessibility::keepToolkitFromHungBus(const std::optional<std::string>& displayServersAddress) {
  if (bus_.wouldKeepWaiting(displayServersAddress)) keepToolkitFromBus();
}

bool AtspiAccessibility::isProcessTrusted() { return trust_.facts().isTrusted(); }

bool AtspiAccessibility::isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions& options) {
  const auto facts = trust_.facts();
  if (!facts.isTrusted() && options.prompt) trust_.prompt(facts);
  return facts.isTrusted();
}

AXUIElementRef AtspiAccessibility::createSystemWide() { return std::make_shared<SystemWideElement>(); }

AXUIElementRef AtspiAccessibility::createApplication(platform::ProcessIdentifier process) {
  return std::make_shared<ApplicationElement>(process);
}

AXError AtspiAccessibility::copyAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                               AXValue& value) {
  if (!element) return AXError::illegalArgument;
  const TurnBudget::Wait wait(bus_.budget());
  auto result = attributeOf(*element, attribute);
  if (result) value = std::move(*result);
  return result.error();
}

AXError AtspiAccessibility::setAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                              const AXValue& value) {
  if (const auto* own = dynamic_cast<const OwnField*>(element.get())) return write(*own, attribute, value);
  const auto* inside = dynamic_cast<const AtspiElement*>(element.get());
  if (inside == nullptr) return element ? AXError::attributeUnsupported : AXError::illegalArgument;
  const TurnBudget::Wait wait(bus_.budget());
  const auto error = write(inside->reference(), attribute, value);
  if (attribute != platform::ax::selectedTextRange)
    fieldReturn_.wrote(inside->reference(), error == AXError::success);
  return error;
}

AXError AtspiAccessibility::write(const OwnField& field, const std::string& attribute, const AXValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return attribute == platform::ax::selectedText && text != nullptr ? field.setSelectedText(*text)
                                                                    : AXError::attributeUnsupported;
}

AXError AtspiAccessibility::write(const ElementReference& reference, const std::string& attribute,
                                  const AXValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  const auto* range = std::get_if<platform::AXRange>(&value);
  if (attribute == platform::ax::selectedText)
    return text != nullptr ? textAccess_.setSelectedText(reference, *text) : AXError::illegalArgument;
  if (attribute == platform::ax::value)
    return text != nullptr ? textAccess_.setValue(reference, *text) : AXError::illegalArgument;
  if (attribute == platform::ax::selectedTextRange)
    return range != nullptr ? textAccess_.setSelectedTextRange(reference, *range) : AXError::illegalArgument;
  return AXError::attributeUnsupported;
}

AXError AtspiAccessibility::performAction(const AXUIElementRef& element, const std::string& action) {
  const auto* inside = dynamic_cast<const AtspiElement*>(element.get());
  if (inside == nullptr) return element ? AXError::actionUnsupported : AXError::illegalArgument;
  const TurnBudget::Wait wait(bus_.budget());
  // The menu item that pastes would paste into another field.
  if (fieldReturn_.isOutOfSight()) return AXError::cannotComplete;
  return action == platform::ax::press ? menuAccess_.press(*inside) : AXError::actionUnsupported;
}

std::vector<platform::ProcessIdentifier> AtspiAccessibility::reachableProcesses() {
  const TurnBudget::Wait wait(bus_.budget());
  return directory_.processes();
}

/// The toolkit hears late that another window was activated.
bool AtspiAccessibility::ownWindowIsActive() {
  const auto window = windows_.activeWindow();
  return window && windows_.process(*window) == ::getpid();
}

void AtspiAccessibility::cameToFront(platform::ProcessIdentifier process, WindowIdentifier window) {
  const TurnBudget::Wait wait(bus_.budget());
  fieldReturn_.cameToFront(process, window);
}

bool AtspiAccessibility::mayPaste() {
  const TurnBudget::Wait wait(bus_.budget());
  if (!fieldReturn_.mayPaste()) return false;
  focusSearch_.focusedElement();
  if (!focusSearch_.passwordHasFocus()) return true;
  if (onNowhere) onNowhere(FieldReturn::Nowhere::passwordHasFocus);
  return false;
}

Result<AXValue> AtspiAccessibility::attributeOf(const platform::AXUIElement& element,
                                                const std::string& attribute) {
  if (const auto* inside = dynamic_cast<const AtspiElement*>(&element)) {
    const auto& reference = inside->reference();
    if (attribute == platform::ax::value) return textAccess_.value(reference);
    if (attribute == platform::ax::selectedText) return textAccess_.selectedText(reference);
    if (attribute == platform::ax::selectedTextRange) return textAccess_.selectedTextRange(reference);
    if (attribute == platform::ax::title) return menuAccess_.title(*inside);
    if (attribute == platform::ax::children) return menuAccess_.children(*inside);
    return AXError::attributeUnsupported;
  }
  std::shared_ptr<AtspiElement> found;
  if (const auto* application = dynamic_cast<const ApplicationElement*>(&element)) {
    if (attribute != platform::ax::menuBar) return AXError::attributeUnsupported;
    found = menuAccess_.menuBar(application->process());
  } else if (dynamic_cast<const SystemWideElement*>(&element) != nullptr) {
    if (attribute != platform::ax::focusedUIElement) return AXError::attributeUnsupported;
    // Whatever has the focus instead is not where the text belongs.
    if (fieldReturn_.isElsewhere() || fieldReturn_.isOutOfSight()) return AXError::noValue;
    if (ownWindowIsActive())
      if (auto own = OwnField::focused()) return AXValue(AXUIElementRef(std::move(own)));
    if (const auto focused = focusSearch_.focusedElement()) found = std::make_shared<AtspiElement>(*focused);
  } else {
    return AXError::illegalArgument;
  }
  if (!found) return AXError::noValue;
  return AXValue(AXUIElementRef(std::move(found)));
}

}  // namespace tavelo::linuxdesktop
