#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Speech.h"
#include "platform/simulated/InMemoryFileManager.h"
#include "platform/simulated/ObservedFileManager.h"
#include "platform/simulated/ObservedSpeech.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAudio.h"
#include "platform/simulated/SimulatedKeyboard.h"
#include "platform/simulated/SimulatedLoop.h"
#include "platform/simulated/SimulatedPasteboard.h"
#include "platform/simulated/SimulatedResources.h"
#include "platform/simulated/SimulatedSpeech.h"
#include "platform/simulated/SimulatedUserNotifications.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

/// What a simulated desktop is made of; the default is virtual time and everything in memory.
struct DesktopOptions {
  enum class Time : std::uint8_t { virtualTime, realTime };
  Time time = Time::virtualTime;

  /// Makes another speech recognition to take the scripted one's place.
  std::function<std::unique_ptr<platform::Speech>(platform::MainQueue&)> speech = nullptr;

  /// Files to use in place of those in memory; must outlive the desktop.
  platform::FileManager* files = nullptr;
};

/// A whole desktop in one object: the platform of this process for as long as it lives.
///
/// Make it first, then the services; drive it (a person types, an application hangs, time passes) and look at
/// what came of it. No application is in front at first. Main thread; one at a time.
class SimulatedDesktop final {
 public:
  explicit SimulatedDesktop(const DesktopOptions& options = {});
  ~SimulatedDesktop();
  SimulatedDesktop(const SimulatedDesktop&) = delete;
  SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

  /// Lets time pass; see `SimulatedLoop::advance`.
  void advance(platform::Seconds interval) { loop_->advance(interval); }

  /// Tells `observer` of everything that happens from now on. Main thread.
  void observe(World::Observer observer) { world_.observe(std::move(observer)); }

  SimulatedLoop& loop() { return *loop_; }
  SimulatedWorkspace& workspace() { return workspace_; }
  SimulatedPasteboard& pasteboard() { return pasteboard_; }
  SimulatedAccessibility& accessibility() { return accessibility_; }
  SimulatedKeyboard& keyboard() { return keyboard_; }
  SimulatedAudio& audio() { return audio_; }
  SimulatedMicrophone& microphone() { return audio_.microphone(); }
  /// The scripted recognition; without effect when another one is in its place.
  SimulatedSpeech& speech() { return speech_; }
  /// The files in memory; without effect when others are in their place.
  InMemoryFileManager& files() { return files_; }
  SimulatedResources& resources() { return resources_; }
  SimulatedUserNotifications& notifications() { return notifications_; }

  /// An application that is started and brought to the front.
  SimulatedApplication& openApplication(std::optional<std::string> name,
                                        std::optional<std::string> bundleIdentifier = std::nullopt);

 private:
  std::unique_ptr<SimulatedLoop> loop_;
  World world_;
  SimulatedPasteboard pasteboard_;
  SimulatedWorkspace workspace_;
  SimulatedAccessibility accessibility_;
  SimulatedKeyboard keyboard_;
  SimulatedAudio audio_;
  SimulatedSpeech speech_;
  std::unique_ptr<platform::Speech> otherSpeech_;
  ObservedSpeech observedSpeech_;
  InMemoryFileManager files_;
  ObservedFileManager observedFiles_;
  SimulatedResources resources_;
  SimulatedUserNotifications notifications_;
  platform::Platform platform_;
  platform::Installation installation_;
};

}  // namespace tavelo::simulated
