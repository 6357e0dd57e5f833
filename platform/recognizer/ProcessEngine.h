#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/posix/ChildProcess.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/ProcessDictation.h"
#include "platform/recognizer/RecognizerLog.h"
#include "platform/recognizer/RecognizerProcess.h"

namespace tavelo::recognizer {

/// The recogniser process of one model, and the thread that talks to it, which sleeps while there is nothing
/// to do. Dictations run one after the other. A process that ends is started again: twice until it is ready,
/// and three times for one segment of a dictation. Main thread.
class ProcessEngine final : public std::enable_shared_from_this<ProcessEngine> {
 public:
  using Clock = std::chrono::steady_clock;
  /// A steady clock. The thread asks it.
  using Now = std::function<Clock::time_point()>;

  /// What a dictation ends with when the model could not be loaded, for the user.
  static constexpr const char* notLoaded = "Không nạp được mô hình nhận diện giọng nói.";

  /// Failures of the process go to `log`.
  ProcessEngine(RecognizerCommand command, RecognizerLog log, Now now = Clock::now);

  /// Like `stop`.
  ~ProcessEngine();

  ProcessEngine(const ProcessEngine&) = delete;
  ProcessEngine& operator=(const ProcessEngine&) = delete;

  /// Starts the process unless it runs. Returns how its load turns out.
  std::shared_ptr<const Outcome> warm();

  /// Has the process recognise what `request` carries and report to `task`. Does nothing after `stop`.
  void recognize(std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request);

  /// Ends the process unless a dictation uses it, so that the memory of the model returns.
  void rest();

  /// Why there is no model, as a sentence for the user: the program may have been removed while we run. Any
  /// thread.
  const char* whyNotLoaded() const;

  /// Has the thread look again. Any thread; never waits.
  void wake();

  /// Ends every dictation without a report, the process and the thread.
  void stop();

 private:
  enum class Phase : std::uint8_t { none, loading, ready };

  void run();
  void takeWakeUps() const;
  void turn();
  bool wantsProcess();
  void start();
  void feed();
  void hear(const ProcessReply& reply);
  void watch();
  void lose(const std::string& why, const char* toUser);
  void giveUp(const std::string& reason);
  void dropOver();
  bool owes() const;
  void wait() const;

  const RecognizerCommand command_;
  const RecognizerLog log_;
  const Now now_;
  posix::Pipe wakeUp_ = posix::Pipe::open();

  std::mutex mutex_;
  std::shared_ptr<Outcome> loading_;
  /// Whether the thread has, or is about to have, a process.
  bool running_ = false;
  bool resting_ = false;
  bool stopping_ = false;
  std::deque<std::shared_ptr<ProcessDictation>> dictations_;

  // The thread's own.
  std::unique_ptr<RecognizerProcess> process_;
  Phase phase_ = Phase::none;
  int failedLoads_ = 0;
  std::string failure_;
  std::uint32_t dictationNumber_ = 0;
  /// The dictation that the process was told of last; null for none.
  std::shared_ptr<ProcessDictation> current_;
  /// When the process last said or took something, or owed nothing.
  Clock::time_point heardAt_{};
  bool hasSpoken_ = false;
  std::uint64_t bytesTaken_ = 0;
  /// What the log does not have yet: it is written when the next process runs.
  std::optional<std::pair<std::string, std::string>> unrecorded_;

  std::thread thread_;
};

}  // namespace tavelo::recognizer
