#pragma once

#include <memory>
#include <string>

#include "platform/recognizer/EngineSpeech.h"

namespace tavelo::recognizer {

class VoskServer;

/// Speech recognition by a Vosk server, which the user has named and which we assume knows Vietnamese only.
/// Each dictation has its own connection, and nothing but its sound is sent. A wss server must have a
/// certificate that this machine trusts, even when it runs on this machine.
///
/// Needs an application object, but not its event loop. Main thread.
class VoskServerSpeech final : public EngineSpeech {
 public:
  /// `address` as the user set it. If invalid, `makeRecognizer` returns null.
  VoskServerSpeech(platform::MainQueue& mainQueue, const std::string& address);

  /// Ends every recognition without a report.
  ~VoskServerSpeech() override;

  std::string failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) override;
  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;

 private:
  std::string addressFailure_;
  /// Null when the address is invalid.
  std::shared_ptr<VoskServer> server_;
};

}  // namespace tavelo::recognizer
