#pragma once

#include "platform/Speech.h"

namespace tavelo::simulated {

class World;

/// The desktop's speech recognition: forwards to a scripted or real one, reports what happens and checks the
/// threads.
class ObservedSpeech final : public platform::Speech {
 public:
  /// `speech` must outlive this object and everything it makes.
  ObservedSpeech(World& world, platform::Speech& speech);

  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override;

 private:
  World& world_;
  platform::Speech& speech_;
};

}  // namespace tavelo::simulated
