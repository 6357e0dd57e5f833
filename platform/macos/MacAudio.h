#pragma once

#include <functional>

#include "platform/Audio.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"

namespace tavelo::macos {

/// The microphone and the permission for it. Main thread.
class MacAudio final : public platform::Audio {
 public:
  /// `mainQueue` must outlive this object and its engines.
  explicit MacAudio(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}
  MacAudio(const MacAudio&) = delete;
  MacAudio& operator=(const MacAudio&) = delete;

  platform::CaptureAuthorizationStatus captureAuthorizationStatus() override;
  void requestCaptureAccess(std::function<void(bool granted)> completion) override;
  std::unique_ptr<platform::AudioEngine> makeEngine() override;

  /// Called on the main queue when the device of a running engine changed, such as a headset that was pulled
  /// out: the engine has stopped then.
  std::function<void()> onInterrupted;

 private:
  platform::MainQueue& mainQueue_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::macos
