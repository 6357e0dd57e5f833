#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/Audio.h"
#include "platform/linux/audio/LinuxAudioEngine.h"

namespace tavelo::linuxdesktop {

/// Sound input from the desktop's sound server (PulseAudio, or PipeWire in its place). Capture is always
/// authorised: Linux desktops do not ask about ordinary programs. Main thread.
class LinuxAudio final : public platform::Audio {
 public:
  /// Captures this source of the sound server from the next start of an engine on; empty for the default one.
  void setSource(std::string name) { *source_ = std::move(name); }

  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override {
    return platform::CaptureAuthorizationStatus::authorized;
  }

  /// Calls `completion` before it returns.
  void requestCaptureAccess(std::function<void(bool granted)> completion) override {
    if (completion) completion(true);
  }

  std::unique_ptr<platform::AudioEngine> makeEngine() override {
    return std::make_unique<LinuxAudioEngine>(source_);
  }

 private:
  const std::shared_ptr<std::string> source_ = std::make_shared<std::string>();
};

}  // namespace tavelo::linuxdesktop
