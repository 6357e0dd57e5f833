#include "recordings/Transcriber.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <thread>
#include <utility>

#include "platform/BufferedRecognitionRequest.h"

namespace tavelo::recordings {
namespace {

using platform::Seconds;
using Clock = std::chrono::steady_clock;

/// More sound does not wait in memory. The request would drop what is beyond its own bound.
constexpr Seconds mostWaiting{5};
constexpr std::chrono::milliseconds lookAgain{100};

/// Gives a recording to a request, on a thread of its own: there the end of the sound is no stop, so the
/// final answer comes.
class Feeder final {
 public:
  /// `heard` is called on the feeder's thread after each piece, with how much sound there was so far.
  Feeder(Recording& recording, platform::BufferedRecognitionRequest& request,
         std::function<void(Seconds)> heard)
      : thread_([this, &recording, &request, heard = std::move(heard)] { feed(recording, request, heard); }) {
  }

  ~Feeder() {
    stopped_ = true;
    thread_.join();
  }
  Feeder(const Feeder&) = delete;
  Feeder& operator=(const Feeder&) = delete;

 private:
  void feed(Recording& recording, platform::BufferedRecognitionRequest& request,
            const std::function<void(Seconds)>& heard) {
    std::uint64_t count = 0;
    for (auto samples = recording.read(); !samples.empty(); samples = recording.read()) {
      while (!request.waitForRoom(mostWaiting, lookAgain))
        if (stopped_) return;
      count += samples.size();
      request.append({{Recording::sampleRate, 1}, std::move(samples)});
      heard(Seconds{static_cast<double>(count) / Recording::sampleRate});
      if (stopped_) return;
    }
    request.endAudio();
  }

  std::atomic<bool> stopped_ = false;
  std::thread thread_;
};

}  // namespace

Transcription Transcriber::transcribe(Recording& recording, const std::function<void(Seconds)>& progress) {
  struct State {
    std::atomic<Seconds> given{Seconds{0}};
    bool over = false;
    std::string raw;
    std::string failure;
  };
  const auto state = std::make_shared<State>();
  const auto request = std::make_shared<platform::BufferedRecognitionRequest>();
  const auto begin = Clock::now();
  const auto task = recognizer_->recognitionTask(request, [state](const auto& result, const auto& error) {
    if (result) state->raw = result->formattedString;
    if (error) state->failure = error->localizedDescription;
    state->over = error || result->isFinal;
  });
  {
    const Feeder feeder{recording, *request, [this, state](Seconds given) {
                          state->given = given;
                          mainQueue_.async([] {});
                        }};
    runUntil_([&] {
      progress(state->given);
      return state->over;
    });
  }
  Transcription transcription{state->raw, state->given, Clock::now() - begin, state->failure};
  if (!recording.failure().empty()) transcription.failure = recording.failure();
  return transcription;
}

}  // namespace tavelo::recordings
