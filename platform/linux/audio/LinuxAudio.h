#pragma once

#include <functional>
#include <memory>

#include "platform/Audio.h"

namespace tavelo::linuxdesktop {

/// Sound input from the desktop's sound server (PulseAudio, or PipeWire in its place). Capturing is allowed:
/// no desktop asks an ordinary program's user. Main thread.
class LinuxAudio final : public platform::Audio {
 public:
  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override;

  /// Answers inside the call, since there is nobody to ask.
  void requestCaptureAccess(std::function<void(bool granted)> completion) override;

  std::unique_ptr<platform::AudioEngine> makeEngine() override;
};

}  // namespace tavelo::linuxdesktop
