#include "platform/simulated/SimulatedDesktop.h"

#include <utility>

#include "platform/simulated/RealTimeLoop.h"
#include "platform/simulated/VirtualTimeLoop.h"

namespace tavelo::simulated {
namespace {

std::unique_ptr<SimulatedLoop> makeLoop(DesktopOptions::Time time) {
  if (time == DesktopOptions::Time::realTime) return std::make_unique<RealTimeLoop>();
  return std::make_unique<VirtualTimeLoop>();
}

}  // namespace

SimulatedDesktop::SimulatedDesktop(const DesktopOptions& options)
    : loop_(makeLoop(options.time)),
      world_(*loop_),
      pasteboard_(world_),
      workspace_(world_, pasteboard_),
      accessibility_(world_, workspace_),
      keyboard_(world_, workspace_, accessibility_),
      audio_(world_),
      speech_(world_),
      otherSpeech_(options.speech ? options.speech(*loop_) : nullptr),
      observedSpeech_(world_, otherSpeech_ ? *otherSpeech_ : speech_),
      files_(world_),
      resources_(world_),
      notifications_(world_),
      platform_{.mainQueue = *loop_,
                .clock = *loop_,
                .fileManager = files_,
                .workspace = workspace_,
                .generalPasteboard = options.overlaysPasteboard
                                         ? static_cast<platform::Pasteboard&>(overlaidPasteboard_)
                                         : pasteboard_,
                .accessibility = accessibility_,
                .keyboardEvents = keyboard_,
                .speech = observedSpeech_,
                .audio = audio_,
                .resources = resources_,
                .userNotifications = notifications_},
      installation_(platform_) {}

SimulatedDesktop::~SimulatedDesktop() {
  // Waiting blocks hold parts of the world and of the services; drop them while the world still exists.
  loop_->discardBlocks();
}

SimulatedApplication& SimulatedDesktop::openApplication(std::optional<std::string> name,
                                                        std::optional<std::string> bundleIdentifier) {
  SimulatedApplication& application = workspace_.addApplication(std::move(name), std::move(bundleIdentifier));
  application.bringToFront();
  return application;
}

}  // namespace tavelo::simulated
