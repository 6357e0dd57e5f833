#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/Speech.h"
#include "platform/simulated/PromptAnswer.h"
#include "platform/simulated/RecognitionScript.h"
#include "platform/simulated/SimulatedRecognitionRequest.h"
#include "platform/simulated/SimulatedRecognitionTask.h"

namespace tavelo::simulated {

class World;

/// Scripted speech recognition and the permission for it. Main thread.
class SimulatedSpeech final : public platform::Speech {
 public:
  explicit SimulatedSpeech(World& world);

  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)> handler) override;

  /// The locales with a recogniser; the default is "vi_VN" alone.
  void setLocales(std::set<std::string> locales) { locales_ = std::move(locales); }
  /// Whether recognisers are available; the default is true.
  void setAvailable(bool available) { available_ = available; }

  /// The default is authorised.
  void setAuthorization(platform::SpeechAuthorizationStatus status) { status_ = status; }
  /// What the person answers while the permission is undecided. Later requests get the decision after the
  /// same time.
  void setPromptAnswer(const PromptAnswer& answer) { answer_ = answer; }

  /// Queues a script; each new task takes the oldest one.
  void addScript(RecognitionScript script) { scripts_.push_back(std::move(script)); }

  /// For tasks that find no script queued; the default never answers.
  void setDefaultScript(RecognitionScript script) { defaultScript_ = std::move(script); }

  /// Makes the newest task answer now, besides its script; `step.after` is ignored. False if there is no
  /// task, if it has finished, or if it was cancelled and its script has no answers after a cancel.
  bool answerNow(const RecognitionStep& step);

  /// How often the prompt was shown, and how often the permission was asked for in all.
  int prompts() const { return prompts_; }
  int authorizationRequests() const { return authorizationRequests_; }

  /// The requests and tasks made so far, in order.
  const std::vector<std::shared_ptr<RequestRecord>>& requests() const { return requests_; }
  const std::vector<std::shared_ptr<SimulatedRecognitionTask>>& tasks() const { return tasks_; }

 private:
  class Recognizer;

  std::shared_ptr<platform::SpeechRecognitionTask> startTask(
      const std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>& request,
      platform::SpeechRecognizer::ResultHandler handler);

  World& world_;
  std::set<std::string> locales_{"vi_VN"};
  bool available_ = true;
  platform::SpeechAuthorizationStatus status_ = platform::SpeechAuthorizationStatus::authorized;
  PromptAnswer answer_;
  std::deque<RecognitionScript> scripts_;
  RecognitionScript defaultScript_;
  int prompts_ = 0;
  int authorizationRequests_ = 0;
  std::vector<std::shared_ptr<RequestRecord>> requests_;
  std::vector<std::shared_ptr<SimulatedRecognitionTask>> tasks_;
};

}  // namespace tavelo::simulated
