#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/Time.h"
#include "tools/load/SoundPlayer.h"

namespace tavelo::load {

/// What became of one dictation. A plain value.
struct Outcome {
  /// The final transcript.
  std::string text;
  /// Why there was none; empty if there was one.
  std::string error;
  /// For each number of words, from one up: the time from the begin until the transcript had so many.
  std::vector<platform::Seconds> wordsAfter;
  /// From the end of the sound to the final transcript.
  platform::Seconds finalAfter{0};
};

/// One dictation of the recording by the program's own client. Main thread.
class Dictation final : public std::enable_shared_from_this<Dictation> {
 public:
  /// Called on the main queue, once.
  using Done = std::function<void(const Outcome&)>;

  /// All three must outlive the dictation.
  Dictation(platform::MainQueue& mainQueue, const platform::Clock& clock, platform::Speech& speech,
            SoundPlayer& player);

  /// Begins to speak. `done` keeps the dictation alive until it was called.
  void begin(Done done);

 private:
  using Result = std::optional<platform::SpeechRecognitionResult>;
  using Error = std::optional<platform::PlatformError>;

  void receive(const Result& result, const Error& error);
  void finish();

  platform::MainQueue& mainQueue_;
  const platform::Clock& clock_;
  platform::Speech& speech_;
  SoundPlayer& player_;
  Outcome outcome_;
  Done done_;
  platform::Uptime begun_{0};
  std::optional<platform::Uptime> soundEnded_;
  bool answered_ = false;
  std::shared_ptr<platform::SpeechRecognitionTask> task_;
};

/// The words of a transcript.
std::vector<std::string> wordsOf(const std::string& transcript);

/// How many words of `expected` do not come in `heard`, in that order.
std::size_t lostWords(const std::vector<std::string>& expected, const std::vector<std::string>& heard);

}  // namespace tavelo::load
