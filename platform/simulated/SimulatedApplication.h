#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/KeyboardEvents.h"
#include "platform/Time.h"
#include "platform/Workspace.h"
#include "platform/simulated/SimulatedField.h"
#include "platform/simulated/SimulatedMenuBar.h"

namespace tavelo::simulated {

class SimulatedWorkspace;
class World;

/// An application of the simulated desktop, made by `SimulatedWorkspace::addApplication`. It lives as long as
/// the desktop, also when its process has ended. Main thread.
class SimulatedApplication final : public platform::RunningApplication {
 public:
  /// How long an accessibility call to an application that does not answer takes before it fails.
  static constexpr platform::Seconds callBound{0.25};

  SimulatedApplication(World& world, SimulatedWorkspace& workspace, platform::ProcessIdentifier process,
                       std::optional<std::string> name, std::optional<std::string> bundleIdentifier);

  std::optional<std::string> localizedName() const override;
  std::optional<std::string> bundleIdentifier() const override;
  platform::ProcessIdentifier processIdentifier() const override;
  bool isTerminated() const override;
  bool activate(platform::ActivationOptions options) override;

  /// Adds an empty field; the first one gets the application's focus. The reference stays valid.
  SimulatedField& addField(std::string title, const FieldBehaviour& behaviour = {});

  /// Adds the menu bar, once.
  SimulatedMenuBar& addMenuBar();
  /// The same with the usual menus in it.
  SimulatedMenuBar& addMenuBar(MenuLanguage language);
  /// Null without one.
  SimulatedMenuBar* menuBar() const { return menuBar_.get(); }

  /// The person moves the focus within the application; null for none.
  void focus(SimulatedField* field);
  /// The field with the application's focus; null when none has it.
  SimulatedField* focusedField() const;

  /// The person brings the application to the front, at once.
  void bringToFront();

  /// The process ends.
  void terminate();

  /// It stops answering accessibility calls and handling keys; when it wakes it handles the keys that waited.
  void hang();
  void wake();
  bool isHung() const { return hung_; }

  /// How long it takes to answer an accessibility call; beyond `callBound` the call fails.
  void setAnswerTime(platform::Seconds time) { answerTime_ = time; }
  platform::Seconds answerTime() const { return answerTime_; }

  void setRefusesActivation(bool refuses) { refusesActivation_ = refuses; }
  /// From the call of `activate` until the application is in front; 0.05 s unless set.
  void setActivationDelay(platform::Seconds delay) { activationDelay_ = delay; }
  /// How often `activate` was called, refused calls included.
  int activations() const { return activations_; }

  /// It keeps the keys for itself: Command-V pastes nothing.
  void setSwallowsKeys(bool swallows) { swallowsKeys_ = swallows; }

  /// The keys that reached the application, also while it hung.
  const std::vector<platform::KeyboardEvent>& receivedKeys() const { return receivedKeys_; }

  /// A key reaches the application. Called by the keyboard.
  void receive(const platform::KeyboardEvent& event);

  /// The pasteboard's plain text goes to the focused field, as by the person's choice of Paste.
  void paste();

  /// The name, or "process 101" without one.
  std::string description() const;

 private:
  void handle(const platform::KeyboardEvent& event);

  World& world_;
  SimulatedWorkspace& workspace_;
  const platform::ProcessIdentifier process_;
  const std::optional<std::string> name_;
  const std::optional<std::string> bundleIdentifier_;
  std::vector<std::shared_ptr<SimulatedField>> fields_;
  std::shared_ptr<SimulatedMenuBar> menuBar_;
  SimulatedField* focusedField_ = nullptr;
  bool terminated_ = false;
  bool hung_ = false;
  bool refusesActivation_ = false;
  bool swallowsKeys_ = false;
  platform::Seconds answerTime_{0};
  platform::Seconds activationDelay_{0.05};
  int activations_ = 0;
  std::vector<platform::KeyboardEvent> receivedKeys_;
  std::vector<platform::KeyboardEvent> waitingKeys_;
};

}  // namespace tavelo::simulated
