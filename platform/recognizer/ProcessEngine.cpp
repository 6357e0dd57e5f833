#include "platform/recognizer/ProcessEngine.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::recognizer {
namespace {

using language::say;
namespace words = language::words;

/// A large model on a slow disk.
constexpr std::chrono::seconds loadLimit{120};
/// It says at once that it loads.
constexpr std::chrono::seconds firstWordLimit{30};
/// While the process owes something, from its last word, or the last bytes it took, to the next.
constexpr std::chrono::seconds silenceLimit{10};
constexpr int checkMilliseconds = 1000;
constexpr int mostLoads = 2;

constexpr const char* ended = "Bộ nhận diện giọng nói dừng đột ngột.";
constexpr const char* hung = "Bộ nhận diện giọng nói không trả lời.";

}  // namespace

ProcessEngine::ProcessEngine(RecognizerCommand command, RecognizerLog log, Now now)
    : command_(std::move(command)), log_(std::move(log)), now_(std::move(now)) {
  for (const int each : {wakeUp_.readEnd.get(), wakeUp_.writeEnd.get()}) posix::makeNonBlocking(each);
}

ProcessEngine::~ProcessEngine() { stop(); }

std::shared_ptr<const Outcome> ProcessEngine::warm() {
  const std::lock_guard lock{mutex_};
  resting_ = false;
  if (running_) return loading_;
  loading_ = std::make_shared<Outcome>();
  if (stopping_) {
    loading_->settle(Outcome::State::failed, say(words::recognitionStopped));
    return loading_;
  }
  running_ = true;
  try {
    if (!thread_.joinable()) thread_ = std::thread{[this] { run(); }};
  } catch (const std::system_error& error) {
    loading_->settle(Outcome::State::failed, error.what());
    running_ = false;
  }
  wake();
  return loading_;
}

void ProcessEngine::recognize(std::shared_ptr<RecognitionTask> task,
                              std::shared_ptr<platform::BufferedRecognitionRequest> request) {
  {
    const std::lock_guard lock{mutex_};
    if (stopping_) return;
    dictations_.push_back(std::make_shared<ProcessDictation>(std::move(task), request));
  }
  request->onArrival([weak = weak_from_this()] {
    if (const auto engine = weak.lock()) engine->wake();
  });
  wake();
}

void ProcessEngine::rest() {
  {
    const std::lock_guard lock{mutex_};
    resting_ = true;
  }
  wake();
}

void ProcessEngine::wake() {
  // A full pipe wakes the thread as well.
  if (::write(wakeUp_.writeEnd.get(), "", 1) < 0) return;
}

void ProcessEngine::stop() {
  std::deque<std::shared_ptr<ProcessDictation>> running;
  {
    const std::lock_guard lock{mutex_};
    stopping_ = true;
    running.swap(dictations_);
  }
  for (const auto& dictation : running) dictation->task().end();
  wake();
  if (thread_.joinable()) thread_.join();
}

void ProcessEngine::run() {
  // Writing to a process that is gone must not end ours.
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  while (true) {
    // First: whoever changes something wakes us afterwards, so what is read from here on is new enough.
    takeWakeUps();
    {
      const std::lock_guard lock{mutex_};
      if (stopping_) break;
    }
    turn();
    wait();
  }
  current_.reset();
  process_.reset();
}

void ProcessEngine::takeWakeUps() const {
  std::array<char, 256> ignored{};
  while (::read(wakeUp_.readEnd.get(), ignored.data(), ignored.size()) > 0) {
  }
}

void ProcessEngine::turn() {
  dropOver();
  if (!process_ && wantsProcess()) start();
  if (unrecorded_) log_.record(unrecorded_->first, unrecorded_->second);
  unrecorded_.reset();
  if (!process_) return;
  failure_.clear();
  const bool alive = process_->exchange([this](const ProcessReply& reply) { hear(reply); });
  if (!alive || !failure_.empty()) return lose(failure_, ended);
  watch();
  if (process_ && phase_ == Phase::ready) feed();
}

/// Ends a process that hangs.
void ProcessEngine::watch() {
  const auto now = now_();
  if (!owes() || bytesTaken_ != process_->taken()) heardAt_ = now;
  bytesTaken_ = process_->taken();
  const auto limit = phase_ == Phase::ready ? silenceLimit : hasSpoken_ ? loadLimit : firstWordLimit;
  if (now - heardAt_ > limit) lose(say(words::processIsSilent), hung);
}

/// Whether the process has to load, to read, to answer, or to take more of what it has read.
bool ProcessEngine::owes() const {
  return phase_ == Phase::loading || process_->unsent() > 0 ||
         (current_ && !current_->isFinished() && (current_->hasSentEnd() || current_->isHeldBack()));
}

/// Forgets the dictations that are over, and the process when it has to rest.
void ProcessEngine::dropOver() {
  const std::lock_guard lock{mutex_};
  std::erase_if(dictations_, [](const auto& dictation) { return dictation->task().isOver(); });
  if (current_ && current_->task().isOver()) {
    if (process_ && !current_->isFinished()) process_->giveUp();
    current_.reset();
  }
  if (!std::exchange(resting_, false) || !dictations_.empty()) return;
  process_.reset();
  phase_ = Phase::none;
  running_ = false;
  // Nobody waits for what never comes.
  if (loading_) loading_->settle(Outcome::State::failed, say(words::processUnused));
}

bool ProcessEngine::wantsProcess() {
  const std::lock_guard lock{mutex_};
  return running_ || std::ranges::any_of(dictations_, [](const auto& each) { return !each->isFinished(); });
}

void ProcessEngine::start() {
  std::string failure;
  process_ = RecognizerProcess::start(command_, failure);
  phase_ = Phase::loading;
  heardAt_ = now_();
  hasSpoken_ = false;
  bytesTaken_ = 0;
  if (!process_) giveUp(failure);
}

void ProcessEngine::feed() {
  if (!current_ || current_->isFinished()) {
    const std::lock_guard lock{mutex_};
    const auto next = std::ranges::find_if(dictations_, [](const auto& each) { return !each->isFinished(); });
    current_ = next != dictations_.end() ? *next : nullptr;
    ++dictationNumber_;
  }
  if (!current_ || current_->hasSentEnd()) return;
  current_->feed(*process_, dictationNumber_);
}

void ProcessEngine::hear(const ProcessReply& reply) {
  // What follows something wrong counts no more, even if it was read together with it.
  if (!failure_.empty()) return;
  heardAt_ = now_();
  hasSpoken_ = true;
  if (reply.kind == ProcessReply::Kind::loadFailed) {
    failure_ = reply.text.empty() ? say(words::modelNotLoaded) : reply.text;
  } else if (reply.kind == ProcessReply::Kind::ready) {
    phase_ = Phase::ready;
    failedLoads_ = 0;
    const std::lock_guard lock{mutex_};
    if (loading_) loading_->settle(Outcome::State::succeeded, reply.text);
  } else if (current_ && !current_->hear(reply)) {
    failure_ = reply.kind == ProcessReply::Kind::failed && !reply.text.empty() ? reply.text
                                                                               : say(words::protocolBroken);
  }
}

/// The process is gone or useless. `toUser` is a sentence for the user.
void ProcessEngine::lose(const std::string& why, const char* toUser) {
  const auto reason = process_->end(why);
  unrecorded_ = {reason, process_->log()};
  process_.reset();
  if (std::exchange(phase_, Phase::none) == Phase::loading) {
    if (++failedLoads_ >= mostLoads) giveUp(reason);
  } else {
    if (current_ && !current_->isFinished() && !current_->restart()) current_->fail(toUser);
    const std::lock_guard lock{mutex_};
    running_ = std::ranges::any_of(dictations_, [](const auto& each) { return !each->isFinished(); });
  }
  current_.reset();
  wake();
}

void ProcessEngine::giveUp(const std::string& reason) {
  failedLoads_ = 0;
  phase_ = Phase::none;
  const std::lock_guard lock{mutex_};
  running_ = false;
  if (loading_) loading_->settle(Outcome::State::failed, reason);
  for (const auto& dictation : dictations_) dictation->fail(whyNotLoaded());
}

const char* ProcessEngine::whyNotLoaded() const {
  std::error_code ignored;
  if (std::filesystem::exists(command_.program, ignored)) return notLoaded;
  return "Không còn chương trình nhận diện giọng nói trên máy. Hãy cài lại Tavelo.";
}

/// Waits for the process or for a wake-up. Without a dictation nothing is due, and nothing wakes the thread.
void ProcessEngine::wait() const {
  std::vector<pollfd> descriptors{{wakeUp_.readEnd.get(), POLLIN, 0}};
  if (process_) process_->watch(descriptors);
  const bool watched = process_ && (phase_ == Phase::loading || current_ || process_->unsent() > 0);
  poll(descriptors.data(), static_cast<nfds_t>(descriptors.size()), watched ? checkMilliseconds : -1);
}

}  // namespace tavelo::recognizer
