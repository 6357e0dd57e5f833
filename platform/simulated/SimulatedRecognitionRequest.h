#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include "platform/Speech.h"

namespace tavelo::simulated {

/// What happened to a recognition request; outlives the request. Any thread.
class RequestRecord final {
 public:
  struct State {
    std::uint64_t frames = 0;
    bool partialResults = false;
    bool ended = false;
    /// The request no longer exists.
    bool released = false;
  };

  State state() const;

 private:
  friend class SimulatedRecognitionRequest;
  mutable std::mutex mutex_;
  State state_;
};

/// Counts the frames appended to it until the end of the sound.
class SimulatedRecognitionRequest final : public platform::SpeechAudioBufferRecognitionRequest {
 public:
  explicit SimulatedRecognitionRequest(std::shared_ptr<RequestRecord> record);
  ~SimulatedRecognitionRequest() override;

  void setShouldReportPartialResults(bool wanted) override;
  void append(const platform::AudioBuffer& buffer) override;
  void endAudio() override;

  bool shouldReportPartialResults() const { return record_->state().partialResults; }

 private:
  const std::shared_ptr<RequestRecord> record_;
};

}  // namespace tavelo::simulated
