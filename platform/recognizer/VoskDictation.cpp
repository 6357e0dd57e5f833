#include "platform/recognizer/VoskDictation.h"

#include <exception>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/recognizer/VoskEngine.h"

namespace tavelo::recognizer {
namespace {

constexpr const char* recognitionFailed = "Bộ nhận diện giọng nói gặp lỗi.";

}  // namespace

VoskDictation::VoskDictation(platform::MainQueue& mainQueue,
                             std::shared_ptr<platform::BufferedRecognitionRequest> request,
                             platform::SpeechRecognizer::ResultHandler resultHandler)
    : mainQueue_(mainQueue),
      request_(std::move(request)),
      reportsPartialResults_(request_ && request_->shouldReportPartialResults()),
      resultHandler_(std::move(resultHandler)) {}

void VoskDictation::begin(const std::shared_ptr<VoskEngine>& engine) {
  engine_ = engine;
  engine->add(shared_from_this());
  if (!request_) return;
  request_->onArrival([engine = std::weak_ptr{engine}] {
    if (const auto awake = engine.lock()) awake->wake();
  });
}

void VoskDictation::cancel() {
  cancelled_ = true;
  resultHandler_ = nullptr;
  if (const auto engine = engine_.lock()) engine->wake();
}

VoskDictation::Progress VoskDictation::step(const LoadedModel* model) {
  if (cancelled_) {
    finish();
    return Progress::ended;
  }
  if (finished_) return Progress::idle;
  if (model == nullptr || !request_) return fail();
  try {
    return decodeNext(*model);
  } catch (const std::exception&) {
    // Memory ran out over a reply; the dictation ends, the program goes on.
    return fail();
  }
}

VoskDictation::Progress VoskDictation::decodeNext(const LoadedModel& model) {
  const auto taken = request_->take();
  if (!taken.buffer && !taken.ended) return Progress::idle;
  if (!decoder_) decoder_.emplace(model);
  if (!(taken.buffer ? decoder_->decode(*taken.buffer) : decoder_->finish())) return fail();

  std::string transcript = decoder_->transcript();
  if (taken.ended) {
    finish();
    report(platform::SpeechRecognitionResult{std::move(transcript), true}, std::nullopt);
    return Progress::idle;
  }
  if (reportsPartialResults_ && transcript != reported_) {
    reported_ = transcript;
    report(platform::SpeechRecognitionResult{std::move(transcript), false}, std::nullopt);
  }
  return Progress::worked;
}

void VoskDictation::finish() {
  finished_ = true;
  if (request_) request_->onArrival({});
  decoder_.reset();
}

VoskDictation::Progress VoskDictation::fail() {
  finish();
  report(std::nullopt, platform::PlatformError{recognitionFailed});
  return Progress::idle;
}

void VoskDictation::report(std::optional<platform::SpeechRecognitionResult> result,
                           std::optional<platform::PlatformError> error) {
  if (cancelled_) return;
  mainQueue_.async([self = shared_from_this(), result = std::move(result), error = std::move(error)] {
    self->deliver(result, error);
  });
}

void VoskDictation::deliver(const std::optional<platform::SpeechRecognitionResult>& result,
                            const std::optional<platform::PlatformError>& error) {
  // Called through a copy: the handler may cancel this dictation, which drops it.
  const auto handler = resultHandler_;
  // The engine keeps the dictation until here, so that its end can still take the handler away.
  if (error || (result && result->isFinal)) cancel();
  if (handler) handler(result, error);
}

}  // namespace tavelo::recognizer
