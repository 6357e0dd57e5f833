#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/OverlaidPasteboard.h"
#include "platform/Platform.h"
#include "platform/Speech.h"
#include "platform/simulated/ObservedSpeech.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAudio.h"
#include "platform/simulated/SimulatedFileManager.h"
#include "platform/simulated/SimulatedKeyboard.h"
#include "platform/simulated/SimulatedLoop.h"
#include "platform/simulated/SimulatedPasteboard.h"
#include "platform/simulated/SimulatedResources.h"
#include "platform/simulated/SimulatedSpeech.h"
#include "platform/simulated/SimulatedUserNotifications.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

/// What a simulated desktop is made of; the default is virtual time and scripted recognition.
struct DesktopOptions {
  enum class Time : std::uint8_t { virtualTime, realTime };
  Time time = Time::virtualTime;

  /// Makes the speech recognition to use in place of the scripted one.
  std::function<std::unique_ptr<platform::Speech>(platform::MainQueue&)> speech = nullptr;

  /// Whether dictated text is only laid over the user's clipboard, as real desktops do it. Without it the
  /// program writes to the simulated pasteboard directly.
  bool overlaysPasteboard = false;
};

/// A whole desktop in one object, installed as this process's platform for as long as it lives.
///
/// Make it before the services, drive it (a person types, an application hangs, time passes), then look at
/// the result. No application is in front at first. Main thread; one at a time.
class SimulatedDesktop final {
 public:
  explicit SimulatedDesktop(const DesktopOptions& options = {});
  ~SimulatedDesktop();
  SimulatedDesktop(const SimulatedDesktop&) = delete;
  SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

  /// See `SimulatedLoop::advance`.
  void advance(platform::Seconds interval) { loop_->advance(interval); }

  /// Tells `observer` of everything that happens from now on. Main thread.
  void observe(World::Observer observer) { world_.observe(std::move(observer)); }

  SimulatedLoop& loop() { return *loop_; }
  SimulatedWorkspace& workspace() { return workspace_; }
  SimulatedPasteboard& pasteboard() { return pasteboard_; }
  /// Of use only where the options ask for it.
  platform::OverlaidPasteboard& overlaidPasteboard() { return overlaidPasteboard_; }
  SimulatedAccessibility& accessibility() { return accessibility_; }
  SimulatedKeyboard& keyboard() { return keyboard_; }
  SimulatedAudio& audio() { return audio_; }
  SimulatedMicrophone& microphone() { return audio_.microphone(); }
  /// The scripted recognition; has no effect if the options replace it.
  SimulatedSpeech& speech() { return speech_; }
  SimulatedFileManager& files() { return files_; }
  SimulatedResources& resources() { return resources_; }
  SimulatedUserNotifications& notifications() { return notifications_; }

  /// Starts an application and brings it to the front.
  SimulatedApplication& openApplication(std::optional<std::string> name,
                                        std::optional<std::string> bundleIdentifier = std::nullopt);

 private:
  std::unique_ptr<SimulatedLoop> loop_;
  World world_;
  SimulatedPasteboard pasteboard_;
  platform::OverlaidPasteboard overlaidPasteboard_{pasteboard_};
  SimulatedWorkspace workspace_;
  SimulatedAccessibility accessibility_;
  SimulatedKeyboard keyboard_;
  SimulatedAudio audio_;
  SimulatedSpeech speech_;
  std::unique_ptr<platform::Speech> otherSpeech_;
  ObservedSpeech observedSpeech_;
  SimulatedFileManager files_;
  SimulatedResources resources_;
  SimulatedUserNotifications notifications_;
  platform::Platform platform_;
  platform::Installation installation_;
};

}  // namespace tavelo::simulated
