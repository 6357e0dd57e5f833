#include "platform/simulated/SimulatedAudio.h"

#include <utility>

#include "platform/simulated/SimulatedAudioEngine.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {

using platform::CaptureAuthorizationStatus;

SimulatedAudio::SimulatedAudio(World& world) : world_(world), microphone_(world) {}

CaptureAuthorizationStatus SimulatedAudio::captureAuthorizationStatus() {
  world_.requireMainThread("Audio::captureAuthorizationStatus");
  return status_;
}

void SimulatedAudio::requestCaptureAccess(std::function<void(bool granted)> completion) {
  world_.requireMainThread("Audio::requestCaptureAccess");
  const bool undecided = status_ == CaptureAuthorizationStatus::notDetermined;
  if (undecided) {
    ++prompts_;
    world_.report(WorldEvent::Kind::permission, "microphone prompt shown");
  }
  answer_.pass(
      world_.loop(), [this, undecided, granted = answer_.granted, completion = std::move(completion)] {
        if (undecided) {
          status_ = granted ? CaptureAuthorizationStatus::authorized : CaptureAuthorizationStatus::denied;
          world_.report(WorldEvent::Kind::permission, granted ? "microphone granted" : "microphone refused");
        }
        completion(status_ == CaptureAuthorizationStatus::authorized);
      });
}

std::unique_ptr<platform::AudioEngine> SimulatedAudio::makeEngine() {
  world_.requireMainThread("Audio::makeEngine");
  return std::make_unique<SimulatedAudioEngine>(world_, microphone_);
}

}  // namespace tavelo::simulated
