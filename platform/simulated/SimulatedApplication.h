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

/// An application of the simulated desktop, made by `SimulatedWorkspace::addApplication`. The object lives as
/// long as the desktop, even after the application's process has ended. Main thread.
class SimulatedApplication final : public platform::RunningApplication {
 public:
  /// How long an accessibility call takes to fail while the application hangs.
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
  /// Null if it has none.
  SimulatedMenuBar* menuBar() const { return menuBar_.get(); }

  /// The person moves the focus within the application; null for none.
  void focus(SimulatedField* field);
  /// The field with the application's focus; null if none has it.
  SimulatedField* focusedField() const;

  /// The person brings the application to the front, at once.
  void bringToFront();

  /// The process ends.
  void terminate();

  /// The application stops answering accessibility calls and handling keys. It handles the waiting keys when
  /// it wakes.
  void hang();
  void wake();
  bool isHung() const { return hung_; }

  /// How often `activate` was called, including refused calls.
  int activations() const { return activations_; }

  /// Makes the application ignore the paste key.
  void setSwallowsKeys(bool swallows) { swallowsKeys_ = swallows; }

  /// The keys that reached the application, including those that arrived while it hung.
  const std::vector<platform::KeyboardEvent>& receivedKeys() const { return receivedKeys_; }

  /// A key reaches the application. The keyboard calls this.
  void receive(const platform::KeyboardEvent& event);

  /// Pastes the pasteboard's plain text into the focused field, as if the person chose Paste.
  void paste();

  /// The name, or "process 101" if it has none.
  std::string description() const;

 private:
  void handle(const platform::KeyboardEvent& event);
  void fetchAndPaste();

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
  bool swallowsKeys_ = false;
  int activations_ = 0;
  std::vector<platform::KeyboardEvent> receivedKeys_;
  std::vector<platform::KeyboardEvent> waitingKeys_;
};

}  // namespace tavelo::simulated
