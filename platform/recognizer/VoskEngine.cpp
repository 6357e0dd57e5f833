#include "platform/recognizer/VoskEngine.h"

#include <exception>
#include <system_error>
#include <utility>

#include "platform/recognizer/VoskDictation.h"

namespace tavelo::recognizer {

VoskEngine::VoskEngine(std::string library, std::filesystem::path modelFolder)
    : libraryFile_(std::move(library)), modelFolder_(std::move(modelFolder)) {
  try {
    thread_ = std::thread{[this] { run(); }};
  } catch (const std::system_error& error) {
    loading_.settle(Outcome::State::failed, error.what());
  }
}

VoskEngine::~VoskEngine() { stop(); }

bool VoskEngine::isIdle() const {
  const std::lock_guard lock{mutex_};
  return dictations_.empty();
}

void VoskEngine::recognize(std::shared_ptr<RecognitionTask> task,
                           std::shared_ptr<platform::BufferedRecognitionRequest> request) {
  const auto wakeIfAlive = [weak = weak_from_this()] {
    if (const auto engine = weak.lock()) engine->wake();
  };
  task->onEnd(wakeIfAlive);
  request->onArrival(wakeIfAlive);
  {
    const std::lock_guard lock{mutex_};
    if (stopping_) return;
    dictations_.push_back(std::make_shared<VoskDictation>(std::move(task), std::move(request)));
  }
  wake();
}

/// Has the thread look at its dictations again. Any thread; never waits.
void VoskEngine::wake() {
  {
    const std::lock_guard lock{mutex_};
    wakeUp_ = true;
  }
  woken_.notify_one();
}

void VoskEngine::stop() {
  Dictations running;
  {
    const std::lock_guard lock{mutex_};
    stopping_ = true;
    running = dictations_;
  }
  for (const auto& dictation : running) dictation->task().end();
  wake();
  if (thread_.joinable()) thread_.join();
}

void VoskEngine::run() {
  std::string failure = load();
  const auto state = failure.empty() ? Outcome::State::succeeded : Outcome::State::failed;
  loading_.settle(state, std::move(failure));
  std::unique_lock lock{mutex_};
  while (!(stopping_ && dictations_.empty())) {
    woken_.wait(lock, [this] { return wakeUp_; });
    wakeUp_ = false;
    const auto dictations = dictations_;
    lock.unlock();
    const bool worked = stepAll(dictations);
    lock.lock();
    wakeUp_ = wakeUp_ || worked;
  }
  lock.unlock();
  model_.reset();
  library_.reset();
}

/// Loads library and model. Returns why that failed; empty when it succeeded.
std::string VoskEngine::load() {
  try {
    if (std::filesystem::is_empty(modelFolder_)) return modelFolder_.string() + ": the folder is empty";
    auto opening = VoskLibrary::open(libraryFile_);
    if (!opening.library) return opening.failure;
    library_ = std::move(opening.library);
    model_ = library_->loadModel(modelFolder_);
    return model_ ? std::string{} : modelFolder_.string() + ": libvosk cannot load the model";
  } catch (const std::exception& error) {
    return error.what();
  }
}

/// Runs one step of each dictation and forgets the ended ones. Returns whether there may be more to decode.
bool VoskEngine::stepAll(const Dictations& dictations) {
  bool worked = false;
  for (const auto& dictation : dictations) {
    const auto progress = dictation->step(model_.get());
    worked = worked || progress == VoskDictation::Progress::worked;
    if (progress != VoskDictation::Progress::ended) continue;
    const std::lock_guard lock{mutex_};
    std::erase(dictations_, dictation);
  }
  return worked;
}

}  // namespace tavelo::recognizer
