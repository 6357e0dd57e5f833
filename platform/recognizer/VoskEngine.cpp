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
    state_ = State::failed;
    failure_ = error.what();
  }
}

VoskEngine::~VoskEngine() { stop(); }

VoskEngine::State VoskEngine::waitUntilLoaded(std::chrono::milliseconds limit) const {
  std::unique_lock lock{mutex_};
  loaded_.wait_for(lock, limit, [this] { return state_ != State::loading; });
  return state_;
}

std::string VoskEngine::failure() const {
  const std::lock_guard lock{mutex_};
  return failure_;
}

bool VoskEngine::isIdle() const {
  const std::lock_guard lock{mutex_};
  return dictations_.empty();
}

void VoskEngine::add(std::shared_ptr<VoskDictation> dictation) {
  {
    const std::lock_guard lock{mutex_};
    if (stopping_) return;
    dictations_.push_back(std::move(dictation));
  }
  wake();
}

void VoskEngine::wake() {
  {
    const std::lock_guard lock{mutex_};
    wakeUp_ = true;
  }
  woken_.notify_one();
}

void VoskEngine::stop() {
  std::vector<std::shared_ptr<VoskDictation>> running;
  {
    const std::lock_guard lock{mutex_};
    stopping_ = true;
    running = dictations_;
  }
  for (const auto& dictation : running) dictation->cancel();
  wake();
  if (thread_.joinable()) thread_.join();
}

void VoskEngine::run() {
  std::string failure = load();
  std::unique_lock lock{mutex_};
  state_ = failure.empty() ? State::ready : State::failed;
  failure_ = std::move(failure);
  loaded_.notify_all();
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

/// Loads library and model; empty when that worked, else why not.
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

/// One step for each dictation; whether there may be more to do.
bool VoskEngine::stepAll(const std::vector<std::shared_ptr<VoskDictation>>& dictations) {
  bool worked = false;
  for (const auto& dictation : dictations) {
    const auto progress = dictation->step(model_.get());
    if (progress == VoskDictation::Progress::ended) remove(*dictation);
    worked = worked || progress == VoskDictation::Progress::worked;
  }
  return worked;
}

void VoskEngine::remove(const VoskDictation& dictation) {
  const std::lock_guard lock{mutex_};
  std::erase_if(dictations_, [&](const auto& held) { return held.get() == &dictation; });
}

}  // namespace tavelo::recognizer
