#pragma once

#include "platform/Audio.h"

namespace tavelo::qt {

/// Sound input where there is no device: capturing is allowed, and no engine starts. Main thread.
class AbsentAudio final : public platform::Audio {
 public:
  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override;
  void requestCaptureAccess(std::function<void(bool granted)> completion) override;
  std::unique_ptr<platform::AudioEngine> makeEngine() override;
};

}  // namespace tavelo::qt
