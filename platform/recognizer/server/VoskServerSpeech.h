#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Speech.h"

namespace tavelo::platform {
class MainQueue;
}

namespace tavelo::recognizer {

class VoskServer;

/// Speech recognition by a Vosk server, which the user has named and which is taken to know Vietnamese. A
/// connection is made for each dictation; no sound is sent but the dictation's. A wss server must have a
/// certificate that this machine trusts, on the machine itself too.
///
/// Needs an application object, but not its loop. Main thread.
class VoskServerSpeech final : public platform::Speech {
 public:
  /// `address` as in `TAVELO_RECOGNIZER`. With one that is none, there is no recogniser.
  VoskServerSpeech(platform::MainQueue& mainQueue, const std::string& address);

  /// Ends every recognition without a report.
  ~VoskServerSpeech() override;

  VoskServerSpeech(const VoskServerSpeech&) = delete;
  VoskServerSpeech& operator=(const VoskServerSpeech&) = delete;

  /// Why a recogniser for the locale would not be available, as far as is known now, in English; empty when
  /// nothing speaks against it.
  std::string failure(const std::string& localeIdentifier) const;

  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override;

 private:
  platform::MainQueue& mainQueue_;
  std::string addressFailure_;
  /// Null when the address is none.
  std::shared_ptr<VoskServer> server_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::recognizer
