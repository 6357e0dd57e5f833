#include "platform/simulated/SimulatedAccessibility.h"

#include <memory>
#include <utility>

#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/SimulatedElement.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

using platform::AXError;
using platform::AXUIElementRef;
using platform::AXValue;

AXError copyFocus(SimulatedField* field, AXValue& value) {
  if (field == nullptr) return AXError::noValue;
  value = AXUIElementRef{field->shared_from_this()};
  return AXError::success;
}

/// The whole desktop. The application with the focus answers for it.
class SystemWideElement final : public SimulatedElement {
 public:
  explicit SystemWideElement(SimulatedWorkspace& workspace) : workspace_(workspace) {}

  SimulatedApplication* respondent() const override {
    SimulatedField* field = workspace_.focusedField();
    return field == nullptr ? nullptr : &field->application();
  }
  bool exists() const override { return true; }
  std::string description() const override { return "the desktop"; }
  AXError copyAttribute(const std::string& attribute, AXValue& value) override {
    if (attribute != platform::ax::focusedUIElement) return AXError::attributeUnsupported;
    return copyFocus(workspace_.focusedField(), value);
  }

 private:
  SimulatedWorkspace& workspace_;
};

/// A whole application; null if no application has the process.
class ApplicationElement final : public SimulatedElement {
 public:
  explicit ApplicationElement(SimulatedApplication* application) : application_(application) {}

  SimulatedApplication* respondent() const override { return application_; }
  bool exists() const override { return application_ != nullptr; }
  std::string description() const override {
    return application_ == nullptr ? "no application" : application_->description();
  }
  AXError copyAttribute(const std::string& attribute, AXValue& value) override {
    if (attribute == platform::ax::menuBar) return copyMenuBar(value);
    if (attribute == platform::ax::focusedUIElement) return copyFocus(application_->focusedField(), value);
    if (attribute == platform::ax::title) {
      const auto name = application_->localizedName();
      if (!name) return AXError::noValue;
      value = *name;
      return AXError::success;
    }
    return AXError::attributeUnsupported;
  }

 private:
  AXError copyMenuBar(AXValue& value) const {
    if (application_->menuBar() == nullptr) return AXError::noValue;
    value = AXUIElementRef{application_->menuBar()->shared_from_this()};
    return AXError::success;
  }

  SimulatedApplication* const application_;
};

/// The result of a call as events word it.
const char* nameOf(AXError error) {
  switch (error) {
    case AXError::success:
      return "success";
    case AXError::failure:
      return "refused";
    case AXError::illegalArgument:
      return "illegal argument";
    case AXError::invalidUIElement:
      return "element is gone";
    case AXError::cannotComplete:
      return "no answer";
    case AXError::attributeUnsupported:
    case AXError::actionUnsupported:
      return "unsupported";
    case AXError::apiDisabled:
      return "not trusted";
    case AXError::noValue:
      return "no value";
  }
  return "?";
}

std::string nameOf(const AXUIElementRef& element) {
  const auto* simulated = dynamic_cast<const SimulatedElement*>(element.get());
  return simulated == nullptr ? "no element" : simulated->description();
}

}  // namespace

SimulatedAccessibility::SimulatedAccessibility(World& world, SimulatedWorkspace& workspace)
    : world_(world), workspace_(workspace) {}

bool SimulatedAccessibility::isProcessTrusted() {
  world_.requireMainThread("Accessibility::isProcessTrusted");
  return trusted_;
}

bool SimulatedAccessibility::isProcessTrustedWithOptions(const platform::AXTrustedCheckOptions& options) {
  world_.requireMainThread("Accessibility::isProcessTrustedWithOptions");
  if (trusted_ || !options.prompt) return trusted_;
  ++prompts_;
  world_.report(WorldEvent::Kind::permission, "accessibility prompt shown");
  return false;
}

AXUIElementRef SimulatedAccessibility::createSystemWide() {
  world_.requireMainThread("Accessibility::createSystemWide");
  return std::make_shared<SystemWideElement>(workspace_);
}

AXUIElementRef SimulatedAccessibility::createApplication(platform::ProcessIdentifier process) {
  world_.requireMainThread("Accessibility::createApplication");
  return std::make_shared<ApplicationElement>(workspace_.find(process));
}

AXError SimulatedAccessibility::copyAttributeValue(const AXUIElementRef& element,
                                                   const std::string& attribute, AXValue& value) {
  world_.requireMainThread("Accessibility::copyAttributeValue");
  AXError result = AXError::success;
  const std::string name = nameOf(element);
  AXValue copy;
  if (auto* simulated = answering(element, result)) result = simulated->copyAttribute(attribute, copy);
  if (result == AXError::success) value = std::move(copy);
  world_.report(WorldEvent::Kind::accessibility, "read " + attribute + " of " + name + ": " + nameOf(result));
  return result;
}

AXError SimulatedAccessibility::setAttributeValue(const AXUIElementRef& element, const std::string& attribute,
                                                  const AXValue& value) {
  world_.requireMainThread("Accessibility::setAttributeValue");
  AXError result = AXError::success;
  const std::string name = nameOf(element);
  if (auto* simulated = answering(element, result)) result = simulated->setAttribute(attribute, value);
  world_.report(WorldEvent::Kind::accessibility, "set " + attribute + " of " + name + ": " + nameOf(result));
  return result;
}

AXError SimulatedAccessibility::performAction(const AXUIElementRef& element, const std::string& action) {
  world_.requireMainThread("Accessibility::performAction");
  AXError result = AXError::success;
  const std::string name = nameOf(element);
  if (auto* simulated = answering(element, result)) result = simulated->perform(action);
  world_.report(WorldEvent::Kind::accessibility, "perform " + action + " of " + name + ": " + nameOf(result));
  return result;
}

void SimulatedAccessibility::setTrusted(bool trusted) {
  if (trusted_ == trusted) return;
  trusted_ = trusted;
  world_.report(WorldEvent::Kind::permission, trusted ? "accessibility granted" : "accessibility withdrawn");
}

SimulatedElement* SimulatedAccessibility::answering(const AXUIElementRef& element, AXError& error) {
  ++calls_;
  auto* simulated = dynamic_cast<SimulatedElement*>(element.get());
  const auto fail = [&error](AXError why) {
    error = why;
    return nullptr;
  };
  if (simulated == nullptr) return fail(AXError::illegalArgument);
  if (!trusted_) return fail(AXError::apiDisabled);
  if (SimulatedApplication* application = simulated->respondent()) {
    if (application->isTerminated()) return fail(AXError::invalidUIElement);
    if (application->isHung()) {
      world_.loop().stall(SimulatedApplication::callBound);
      return fail(AXError::cannotComplete);
    }
  }
  if (!simulated->exists()) return fail(AXError::invalidUIElement);
  return simulated;
}

}  // namespace tavelo::simulated
