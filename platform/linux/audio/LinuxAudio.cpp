#include "platform/linux/audio/LinuxAudio.h"

#include "platform/linux/audio/LinuxAudioEngine.h"

namespace tavelo::linuxdesktop {

platform::CaptureAuthorizationStatus LinuxAudio::captureAuthorizationStatus() {
  return platform::CaptureAuthorizationStatus::authorized;
}

void LinuxAudio::requestCaptureAccess(std::function<void(bool granted)> completion) {
  if (completion) completion(true);
}

std::unique_ptr<platform::AudioEngine> LinuxAudio::makeEngine() {
  return std::make_unique<LinuxAudioEngine>();
}

}  // namespace tavelo::linuxdesktop
