#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Workspace.h"
#include "platform/simulated/SimulatedApplication.h"

namespace tavelo::simulated {

class SimulatedPasteboard;
class World;

/// The applications, which of them is in front, and where the keyboard focus is. Main thread.
class SimulatedWorkspace final : public platform::Workspace {
 public:
  SimulatedWorkspace(World& world, SimulatedPasteboard& pasteboard);

  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool windowsMayBeTranslucent() override { return translucency_; }
  bool open(const std::string& url) override;

  /// Starts an application, behind the others; it gets the next process identifier.
  SimulatedApplication& addApplication(std::optional<std::string> name,
                                       std::optional<std::string> bundleIdentifier = std::nullopt);

  /// The program under test: frontmost when one of its own windows is active.
  SimulatedApplication& ownApplication() const { return *applications_.front(); }

  /// Null when none has this process.
  SimulatedApplication* find(platform::ProcessIdentifier process) const;

  /// Null when none is in front.
  SimulatedApplication* frontmost() const { return frontmost_; }

  /// At once; null for none. The keyboard focus goes with it. A terminated application cannot come to the
  /// front.
  void setFrontmost(SimulatedApplication* application);

  /// A floating panel takes the keyboard focus while its application stays behind; null gives it back.
  void setPanelFocus(SimulatedField* field);

  /// Nothing on the desktop has the keyboard focus as far as accessibility can tell; keys still arrive.
  void setFocusHidden(bool hidden);

  /// The element with the keyboard focus, desktop-wide; null when there is none.
  SimulatedField* focusedField() const;

  /// Who receives keys: the owner of a panel with the focus, else the frontmost application; null when
  /// nobody.
  SimulatedApplication* keyReceiver() const;

  void setTranslucency(bool possible) { translucency_ = possible; }

  const std::vector<std::string>& openedURLs() const { return openedUrls_; }

  SimulatedPasteboard& pasteboard() const { return pasteboard_; }

  /// An application's focus may have changed. Called by the applications.
  void focusChanged();
  /// An application's process has ended. Called by it.
  void applicationEnded(const SimulatedApplication& application);

 private:
  World& world_;
  SimulatedPasteboard& pasteboard_;
  std::vector<std::shared_ptr<SimulatedApplication>> applications_;
  SimulatedApplication* frontmost_ = nullptr;
  SimulatedField* panelField_ = nullptr;
  bool focusHidden_ = false;
  const SimulatedField* reportedFocus_ = nullptr;
  bool translucency_ = true;
  std::vector<std::string> openedUrls_;
};

}  // namespace tavelo::simulated
