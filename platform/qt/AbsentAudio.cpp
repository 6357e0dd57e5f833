#include "platform/qt/AbsentAudio.h"

namespace tavelo::qt {
namespace {

class AbsentAudioEngine final : public platform::AudioEngine {
 public:
  platform::AudioFormat inputFormat(platform::AudioBus) override { return {}; }
  void installTap(platform::AudioBus, std::uint32_t, const platform::AudioFormat&, TapBlock) override {}
  void removeTap(platform::AudioBus) override {}
  void prepare() override {}
  std::optional<platform::PlatformError> start() override {
    return platform::PlatformError{"Không có thiết bị thu âm."};
  }
  void stop() override {}
};

}  // namespace

platform::CaptureAuthorizationStatus AbsentAudio::captureAuthorizationStatus() {
  return platform::CaptureAuthorizationStatus::authorized;
}

void AbsentAudio::requestCaptureAccess(std::function<void(bool granted)> completion) { completion(true); }

std::unique_ptr<platform::AudioEngine> AbsentAudio::makeEngine() {
  return std::make_unique<AbsentAudioEngine>();
}

}  // namespace tavelo::qt
