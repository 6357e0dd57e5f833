#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/Time.h"

namespace tavelo::platform {

/// Speech recognition by a backend that can be replaced while the program runs. A dictation stays with the
/// backend it began with. A replaced backend lives until nobody holds a recogniser or a running task of it.
///
/// All backends must take each other's requests. Main thread, unless `Speech` says otherwise.
class SwitchingSpeech final : public Speech {
 public:
  /// How often we look whether replaced backends are still used. So a late last word can still be told of.
  static constexpr Seconds interval{5};

  /// `mainQueue` must outlive this object, and this object its recognisers and tasks.
  SwitchingSpeech(MainQueue& mainQueue, std::unique_ptr<Speech> speech);

  /// Uses `speech` from the next recogniser on.
  void use(std::unique_ptr<Speech> speech);

  std::shared_ptr<SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) override;

 private:
  /// Whoever uses a backend holds a copy; see `Backend::use`.
  using Use = std::shared_ptr<const void>;
  struct Backend {
    std::unique_ptr<Speech> speech;
    Use use = std::make_shared<int>();
  };
  class Recognizer;
  class Task;

  void dropUnused();

  MainQueue& mainQueue_;
  Backend current_;
  std::vector<Backend> replaced_;
  Lifetime lifetime_;
};

}  // namespace tavelo::platform
