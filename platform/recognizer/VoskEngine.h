#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/recognizer/VoskLibrary.h"

namespace tavelo::recognizer {

class VoskDictation;

/// The thread that holds one model and decodes for every dictation, a buffer at a time. It sleeps while there
/// is nothing to decode. Main thread, unless said otherwise.
class VoskEngine final {
 public:
  enum class State : std::uint8_t { loading, ready, failed };

  /// Starts the thread, which begins to load at once.
  VoskEngine(std::string library, std::filesystem::path modelFolder);

  /// Like `stop`.
  ~VoskEngine();

  VoskEngine(const VoskEngine&) = delete;
  VoskEngine& operator=(const VoskEngine&) = delete;

  /// The state once loading is over, or `loading` when `limit` passed before.
  State waitUntilLoaded(std::chrono::milliseconds limit) const;

  /// Why the state is `failed`, in English, for the log; empty otherwise.
  std::string failure() const;

  /// Whether no dictation is in its hands, waiting for its last report to be delivered included.
  bool isIdle() const;

  /// Takes a dictation and steps it until it ends. Does nothing after `stop`.
  void add(std::shared_ptr<VoskDictation> dictation);

  /// Has the thread look at its dictations again. Any thread; never waits.
  void wake();

  /// Cancels what runs and ends the thread, after the decode or load that it is in.
  void stop();

 private:
  void run();
  std::string load();
  bool stepAll(const std::vector<std::shared_ptr<VoskDictation>>& dictations);
  void remove(const VoskDictation& dictation);

  const std::string libraryFile_;
  const std::filesystem::path modelFolder_;

  // Engine thread.
  std::unique_ptr<const VoskLibrary> library_;
  std::unique_ptr<const LoadedModel> model_;

  mutable std::mutex mutex_;
  mutable std::condition_variable loaded_;
  std::condition_variable woken_;
  State state_ = State::loading;
  std::string failure_;
  std::vector<std::shared_ptr<VoskDictation>> dictations_;
  bool wakeUp_ = false;
  bool stopping_ = false;

  std::thread thread_;
};

}  // namespace tavelo::recognizer
