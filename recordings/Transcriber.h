#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/Time.h"
#include "recordings/Recording.h"

namespace tavelo::recordings {

/// What a recogniser made of a recording. A plain value.
struct Transcription {
  /// The raw transcript.
  std::string raw;
  /// How much sound there was.
  platform::Seconds sound{0};
  /// From the first sample to the final answer.
  platform::Seconds took{0};
  /// Why there is no transcript, as one clause; empty if there is one.
  std::string failure;
};

/// Has a recogniser transcribe whole recordings, as fast as it can decode them. Main thread.
class Transcriber final {
 public:
  /// Runs the blocks of the main queue until the condition holds, which is checked after each of them.
  using RunUntil = std::function<void(const std::function<bool()>& condition)>;

  /// `recognizer` must take a `platform::BufferedRecognitionRequest`. `runUntil` runs `mainQueue`, which must
  /// outlive this object.
  Transcriber(std::shared_ptr<platform::SpeechRecognizer> recognizer, platform::MainQueue& mainQueue,
              RunUntil runUntil)
      : recognizer_(std::move(recognizer)), mainQueue_(mainQueue), runUntil_(std::move(runUntil)) {}

  /// Returns when the recogniser has given its final answer or failed. Calls `progress` now and then with how
  /// much sound it has been given.
  Transcription transcribe(Recording& recording, const std::function<void(platform::Seconds)>& progress);

 private:
  const std::shared_ptr<platform::SpeechRecognizer> recognizer_;
  platform::MainQueue& mainQueue_;
  const RunUntil runUntil_;
};

}  // namespace tavelo::recordings
