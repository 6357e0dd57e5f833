#pragma once

#include <functional>
#include <memory>

#include "platform/Audio.h"
#include "platform/linux/audio/LinuxAudioEngine.h"

namespace tavelo::linuxdesktop {

/// Sound input from the desktop's sound server (PulseAudio, or PipeWire in its place). Capture is always
/// authorised: Linux desktops do not ask about ordinary programs. Main thread.
class LinuxAudio final : public platform::Audio {
 public:
  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override {
    return platform::CaptureAuthorizationStatus::authorized;
  }

  /// Calls `completion` before it returns.
  void requestCaptureAccess(std::function<void(bool granted)> completion) override {
    if (completion) completion(true);
  }

  std::unique_ptr<platform::AudioEngine> makeEngine() override {
    return std::make_unique<LinuxAudioEngine>();
  }
};

}  // namespace tavelo::linuxdesktop
