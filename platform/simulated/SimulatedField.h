#pragma once

#include <memory>
#include <string>

#include "platform/simulated/FieldBehaviour.h"
#include "platform/simulated/SimulatedElement.h"

namespace tavelo::simulated {

class World;

/// A text field of an application, made by `SimulatedApplication::addField`. Main thread.
class SimulatedField final : public SimulatedElement, public std::enable_shared_from_this<SimulatedField> {
 public:
  SimulatedField(World& world, SimulatedApplication& application, std::string title,
                 FieldBehaviour behaviour);

  /// The text, and the selection in UTF-16 code units, which always lies within the text.
  const std::string& value() const { return value_; }
  platform::AXRange selection() const { return selection_; }

  /// Sets the text and puts the caret at its end. Reports no event.
  void setValue(std::string value);

  /// Selects a range, clamped to the text.
  void select(std::int64_t location, std::int64_t length);

  /// The person types: the text replaces the selection, whatever the behaviour is.
  void type(const std::string& text);

  /// Pastes if the behaviour allows it. Whoever pastes does not learn the outcome.
  void paste(const std::string& text);

  /// Removes the field; accessibility calls on it fail from now on.
  void close();

  const FieldBehaviour& behaviour() const { return behaviour_; }
  void setBehaviour(const FieldBehaviour& behaviour) { behaviour_ = behaviour; }

  SimulatedApplication& application() const { return application_; }

  SimulatedApplication* respondent() const override { return &application_; }
  bool exists() const override { return !closed_; }
  std::string description() const override;
  platform::AXError copyAttribute(const std::string& attribute, platform::AXValue& value) override;
  platform::AXError setAttribute(const std::string& attribute, const platform::AXValue& value) override;

 private:
  platform::AXError copyValue(platform::AXValue& value) const;
  platform::AXError copyRange(platform::AXValue& value) const;
  platform::AXError setSelectedText(const platform::AXValue& value);
  platform::AXError setWholeValue(const platform::AXValue& value);
  platform::AXError setRange(const platform::AXValue& value);
  void replaceSelection(const std::string& text);
  void reportText();

  World& world_;
  SimulatedApplication& application_;
  const std::string title_;
  FieldBehaviour behaviour_;
  std::string value_;
  platform::AXRange selection_{};
  bool closed_ = false;
};

}  // namespace tavelo::simulated
