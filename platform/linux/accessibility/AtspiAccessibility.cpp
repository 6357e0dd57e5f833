#include "platform/linux/accessibility/AtspiAccessibility.h"

#include <utility>
#include <variant>
#include <vector>

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

/// Reads with a function of an error and an output, whose output becomes the value on success.
template <class Kind, class Read>
AXError copy(AXValue& value, Read read) {
  Kind result{};
  const auto error = read(result);
  if (error == AXError::success) value = std::move(result);
  return error;
}

}  // namespace

AtspiAccessibility::AtspiAccessibility(platform::MainQueue& mainQueue, const platform::Clock& clock,
                                       ActiveWindow& windows, platform::UserNotifications& notifications,
                                       std::function<bool()> hasRawKeyEvents)
    : bus_(mainQueue, clock),
      directory_(bus_),
      frameSearch_(windows, directory_, bus_),
      focusSearch_(windows, frameSearch_, bus_),
      textAccess_(bus_),
      menuAccess_(frameSearch_, bus_),
      trust_(bus_, notifications, std::move(hasRawKeyEvents)) {}

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
  if (const auto* inside = dynamic_cast<const AtspiElement*>(element.get()))
    return copyElementAttribute(*inside, attribute, value);
  if (const auto* application = dynamic_cast<const ApplicationElement*>(element.get())) {
    return attribute == platform::ax::menuBar ? copyMenuBar(application->process(), value)
                                              : AXError::attributeUnsupported;
  }
  if (dynamic_cast<const SystemWideElement*>(element.get()) != nullptr) {
    return attribute == platform::ax::focusedUIElement ? copyFocusedElement(value)
                                                       : AXError::attributeUnsupported;
  }
  return AXError::illegalArgument;
}

AXError AtspiAccessibility::setAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                              const AXValue& value) {
  const auto* inside = dynamic_cast<const AtspiElement*>(element.get());
  if (inside == nullptr) return element ? AXError::attributeUnsupported : AXError::illegalArgument;
  const auto& reference = inside->reference();
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
  return action == platform::ax::press ? menuAccess_.press(*inside) : AXError::actionUnsupported;
}

AXError AtspiAccessibility::copyFocusedElement(AXValue& value) {
  const auto found = focusSearch_.focusedElement();
  if (!found) return AXError::noValue;
  value = AXUIElementRef(std::make_shared<AtspiElement>(*found));
  return AXError::success;
}

AXError AtspiAccessibility::copyMenuBar(platform::ProcessIdentifier process, AXValue& value) {
  auto menuBar = menuAccess_.menuBar(process);
  if (!menuBar) return AXError::noValue;
  value = AXUIElementRef(std::move(menuBar));
  return AXError::success;
}

AXError AtspiAccessibility::copyElementAttribute(const AtspiElement& element, const std::string& attribute,
                                                 AXValue& value) {
  const auto& reference = element.reference();
  if (attribute == platform::ax::value)
    return copy<std::string>(value, [&](auto& text) { return textAccess_.value(reference, text); });
  if (attribute == platform::ax::selectedText)
    return copy<std::string>(value, [&](auto& text) { return textAccess_.selectedText(reference, text); });
  if (attribute == platform::ax::selectedTextRange) {
    return copy<platform::AXRange>(
        value, [&](auto& range) { return textAccess_.selectedTextRange(reference, range); });
  }
  if (attribute == platform::ax::title)
    return copy<std::string>(value, [&](auto& title) { return menuAccess_.title(element, title); });
  if (attribute == platform::ax::children) {
    return copy<std::vector<AXUIElementRef>>(
        value, [&](auto& children) { return menuAccess_.children(element, children); });
  }
  return AXError::attributeUnsupported;
}

}  // namespace tavelo::linuxdesktop
