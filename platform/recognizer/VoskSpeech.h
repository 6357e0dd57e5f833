#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/recognizer/EngineSpeech.h"
#include "platform/recognizer/VoskConfiguration.h"

namespace tavelo::recognizer {

class VoskEngine;

/// Speech recognition in this process, by libvosk: no sound leaves the machine.
///
/// A model is loaded when its locale is first used, or by `preload`, and then kept. If loading fails, the
/// next `makeRecognizer` for the locale tries again. Main thread.
class VoskSpeech final : public EngineSpeech {
 public:
  VoskSpeech(platform::MainQueue& mainQueue, VoskConfiguration configuration);

  /// Ends every recognition without a report. Waits for the running decode or load.
  ~VoskSpeech() override;

  /// Begins to load the model for the locale, if there is one, so that the first dictation need not wait.
  void preload(const std::string& localeIdentifier);

  std::string failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) override;
  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;

 private:
  std::shared_ptr<VoskEngine> engineFor(const std::string& localeIdentifier);

  const VoskConfiguration configuration_;
  std::map<std::string, std::shared_ptr<VoskEngine>> engines_;
};

}  // namespace tavelo::recognizer
