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

/// The applications, which one is in front, and where the keyboard focus is. Main thread.
class SimulatedWorkspace final : public platform::Workspace {
 public:
  SimulatedWorkspace(World& world, SimulatedPasteboard& pasteboard);

  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool windowsMayBeTranslucent() override { return translucency_; }
  bool open(const std::string& url) override;

  /// Starts an application behind the others, with the next process identifier.
  SimulatedApplication& addApplication(std::optional<std::string> name,
                                       std::optional<std::string> bundleIdentifier = std::nullopt);

  /// The program under test. It is frontmost while one of its own windows is active.
  SimulatedApplication& ownApplication() const { return *applications_.front(); }

  /// Null if no application has this process.
  SimulatedApplication* find(platform::ProcessIdentifier process) const;

  /// Null if no application is in front.
  SimulatedApplication* frontmost() const { return frontmost_; }

  /// Takes effect at once and moves the keyboard focus; null for no application. A terminated application
  /// cannot come to the front.
  void setFrontmost(SimulatedApplication* application);

  /// Gives the keyboard focus to a floating panel whose application stays behind; null takes it away again.
  void setPanelFocus(SimulatedField* field);

  /// The field with the keyboard focus, in any application; null if there is none.
  SimulatedField* focusedField() const;

  /// The application that receives keys: the owner of a panel with the focus, else the frontmost one; may be
  /// null.
  SimulatedApplication* keyReceiver() const;

  void setTranslucency(bool possible) { translucency_ = possible; }

  const std::vector<std::string>& openedURLs() const { return openedUrls_; }

  SimulatedPasteboard& pasteboard() const { return pasteboard_; }

  /// An application's focus may have changed. The applications call this.
  void focusChanged();
  /// An application's process has ended. That application calls this.
  void applicationEnded(const SimulatedApplication& application);

 private:
  World& world_;
  SimulatedPasteboard& pasteboard_;
  std::vector<std::shared_ptr<SimulatedApplication>> applications_;
  SimulatedApplication* frontmost_ = nullptr;
  SimulatedField* panelField_ = nullptr;
  const SimulatedField* reportedFocus_ = nullptr;
  bool translucency_ = true;
  std::vector<std::string> openedUrls_;
};

}  // namespace tavelo::simulated
