#pragma once

#include <functional>
#include <memory>

#include "platform/Audio.h"
#include "platform/simulated/PromptAnswer.h"
#include "platform/simulated/SimulatedMicrophone.h"

namespace tavelo::simulated {

class World;

/// Sound input of the simulated desktop and the permission for it. Main thread.
class SimulatedAudio final : public platform::Audio {
 public:
  explicit SimulatedAudio(World& world);

  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override;
  void requestCaptureAccess(std::function<void(bool granted)> completion) override;
  std::unique_ptr<platform::AudioEngine> makeEngine() override;

  /// The default is authorised.
  void setAuthorization(platform::CaptureAuthorizationStatus status) { status_ = status; }

  /// What the person answers. The prompt is shown only until the permission is decided; later requests get
  /// the decision after the same time.
  void setPromptAnswer(const PromptAnswer& answer) { answer_ = answer; }

  /// How often the prompt was shown.
  int prompts() const { return prompts_; }

  SimulatedMicrophone& microphone() { return microphone_; }

 private:
  World& world_;
  SimulatedMicrophone microphone_;
  platform::CaptureAuthorizationStatus status_ = platform::CaptureAuthorizationStatus::authorized;
  PromptAnswer answer_;
  int prompts_ = 0;
};

}  // namespace tavelo::simulated
