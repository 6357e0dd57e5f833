#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Speech.h"
#include "platform/recognizer/VoskConfiguration.h"

namespace tavelo::platform {
class MainQueue;
}

namespace tavelo::recognizer {

class VoskEngine;

/// Speech recognition in process, by libvosk: no sound leaves the machine.
///
/// A model is loaded at the first use of its locale, or by `preload`, and kept. When it could not be loaded,
/// the next recogniser that is made for the locale tries again. Nothing asks for permission on this platform.
/// Main thread.
class VoskSpeech final : public platform::Speech {
 public:
  VoskSpeech(platform::MainQueue& mainQueue, VoskConfiguration configuration);

  /// Ends every recognition without a report; waits for the decode that runs, or for the model's loading.
  ~VoskSpeech() override;

  VoskSpeech(const VoskSpeech&) = delete;
  VoskSpeech& operator=(const VoskSpeech&) = delete;

  /// Begins to load the model for the locale, if there is one, so that the first dictation need not wait.
  void preload(const std::string& localeIdentifier);

  /// Why a recogniser for the locale would not be available, as far as is known now, in English; empty when
  /// nothing speaks against it.
  std::string failure(const std::string& localeIdentifier) const;

  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override;

 private:
  std::shared_ptr<VoskEngine> engineFor(const std::string& localeIdentifier);

  platform::MainQueue& mainQueue_;
  const VoskConfiguration configuration_;
  std::map<std::string, std::shared_ptr<VoskEngine>> engines_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::recognizer
