#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/Speech.h"

namespace tavelo::macos {

class MacRecognitionTask;

/// Speech recognition by the system. Main thread, unless `platform::Speech` says otherwise.
class MacSpeech final : public platform::Speech {
 public:
  /// `mainQueue` must outlive this object and its tasks.
  explicit MacSpeech(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}
  MacSpeech(const MacSpeech&) = delete;
  MacSpeech& operator=(const MacSpeech&) = delete;

  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override;

  /// Ends every running task with an error, because its sound has ended. `reason` is a sentence for the user.
  void failRunningTasks(const std::string& reason);

 private:
  class Recognizer;

  platform::MainQueue& mainQueue_;
  /// Weak, because a recogniser may outlive this object.
  std::shared_ptr<std::vector<std::weak_ptr<MacRecognitionTask>>> tasks_ =
      std::make_shared<std::vector<std::weak_ptr<MacRecognitionTask>>>();
};

}  // namespace tavelo::macos
