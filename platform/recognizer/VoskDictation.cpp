#include "platform/recognizer/VoskDictation.h"

#include <exception>
#include <string>
#include <utility>

namespace tavelo::recognizer {

VoskDictation::VoskDictation(std::shared_ptr<RecognitionTask> task,
                             std::shared_ptr<platform::BufferedRecognitionRequest> request)
    : task_(std::move(task)), request_(std::move(request)) {}

VoskDictation::Progress VoskDictation::step(const LoadedModel* model) {
  if (task_->isOver()) {
    finish();
    return Progress::ended;
  }
  if (finished_) return Progress::idle;
  if (model == nullptr) return fail();
  try {
    return decodeNext(*model);
  } catch (const std::exception&) {
    // A huge reply can exhaust the memory. That ends the dictation, not the program.
    return fail();
  }
}

VoskDictation::Progress VoskDictation::decodeNext(const LoadedModel& model) {
  const auto taken = request_->take();
  if (!taken.buffer && !taken.ended) return Progress::idle;
  if (!decoder_) decoder_.emplace(model);
  if (!(taken.buffer ? decoder_->decode(*taken.buffer) : decoder_->finish())) return fail();

  const std::string transcript = decoder_->transcript();
  if (taken.ended) {
    finish();
    task_->reportFinal(transcript);
    return Progress::idle;
  }
  task_->reportPartial(transcript);
  return Progress::worked;
}

VoskDictation::Progress VoskDictation::fail() {
  finish();
  task_->fail();
  return Progress::idle;
}

void VoskDictation::finish() {
  finished_ = true;
  request_->onArrival({});
  decoder_.reset();
}

}  // namespace tavelo::recognizer
