#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "app/SpeechWiring.h"
#include "platform/MainQueue.h"
#include "platform/UserNotifications.h"
#include "settings/Settings.h"
#include "ui/qt/setup/SetupDesktop.h"

namespace tavelo {

namespace linuxdesktop {
class AtspiAccessibility;
class DisplayServer;
}  // namespace linuxdesktop

/// What of the running program the set-up window is about. All references must outlive what is made of it.
struct SetupParts {
  settings::Settings& settings;
  /// Has the running program use what the settings file says now.
  std::function<void()> takeSettings;
  /// Does that too, and has it load its model again, which may be another one by now.
  std::function<void()> renewSpeech;
  linuxdesktop::DisplayServer& displayServer;
  linuxdesktop::AtspiAccessibility& accessibility;
  ConfiguredSpeech& speech;
  platform::MainQueue& mainQueue;
  platform::UserNotifications& notifications;
  std::optional<std::filesystem::path> dataHome;
};

/// The set-up window's view of a Linux desktop. Main thread, with an application object.
SetupDesktop makeSetupDesktop(const SetupParts& parts);

/// Whether there is no recogniser, and neither the environment nor the settings name one or a part of one.
bool lacksRecognizer(const settings::Settings& settings,
                     const std::optional<std::filesystem::path>& dataHome);

}  // namespace tavelo
