#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include "platform/Speech.h"

namespace tavelo::simulated {

/// What has become of a recognition request; outlives it. Any thread.
class RequestRecord final {
 public:
  struct State {
    std::uint64_t buffers = 0;
    std::uint64_t frames = 0;
    /// Buffers that came after the end of the sound and were ignored.
    std::uint64_t lateBuffers = 0;
    bool partialResults = false;
    bool ended = false;
    /// Nobody holds the request any more.
    bool released = false;
  };

  State state() const;

 private:
  friend class SimulatedRecognitionRequest;
  mutable std::mutex mutex_;
  State state_;
};

/// Counts the sound it is given.
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
