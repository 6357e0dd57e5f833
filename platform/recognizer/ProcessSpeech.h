#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Time.h"
#include "platform/recognizer/EngineSpeech.h"
#include "platform/recognizer/ModelConfiguration.h"
#include "platform/recognizer/RecognizerLog.h"

namespace tavelo::recognizer {

class ProcessEngine;

/// Speech recognition by a recogniser process on this machine: no sound leaves it.
///
/// The process starts when its locale is first used, or by `preload`, and ends ten minutes after the last
/// dictation, so that the memory of the model returns. If loading fails, the next `makeRecognizer` for the
/// locale tries again. Main thread.
class ProcessSpeech final : public EngineSpeech {
 public:
  static constexpr platform::Seconds idleLimit{600};

  /// `program` is the recogniser process. Its failures go to `log`.
  ProcessSpeech(platform::MainQueue& mainQueue, std::filesystem::path program,
                ModelConfiguration configuration, RecognizerLog log);

  /// Ends every recognition without a report, and the processes.
  ~ProcessSpeech() override;

  /// Begins to load the model for the locale, if there is one, so that the first dictation need not wait.
  void preload(const std::string& localeIdentifier);

  /// Does that too, and tells how it turns out; null if there is no model.
  std::shared_ptr<const Outcome> load(const std::string& localeIdentifier);

  /// The engine for the locale and its version, once the model is loaded; empty before.
  std::string engine(const std::string& localeIdentifier);

  /// Whether the locale's model is still being loaded.
  bool isLoading(const std::string& localeIdentifier);

  std::string failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) override;
  std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;

 private:
  class Recognizer;

  std::shared_ptr<ProcessEngine> engineFor(const std::string& localeIdentifier);
  void restWhenIdle();

  const std::filesystem::path program_;
  const ModelConfiguration configuration_;
  const RecognizerLog log_;
  /// By model folder and library.
  std::map<std::string, std::shared_ptr<ProcessEngine>> engines_;
  /// Counts the uses, so that an idle timer knows whether there was one since.
  std::uint64_t uses_ = 0;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::recognizer
