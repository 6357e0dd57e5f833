#pragma once

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/RecognitionTask.h"
#include "platform/recognizer/VoskLibrary.h"

namespace tavelo::recognizer {

class VoskDictation;

/// A thread that holds one model and decodes all dictations, a buffer at a time. It sleeps while there is
/// nothing to decode. Must be held by a `std::shared_ptr`. Main thread, unless said otherwise.
class VoskEngine final : public std::enable_shared_from_this<VoskEngine> {
 public:
  /// Starts the thread, which begins to load at once.
  VoskEngine(std::string library, std::filesystem::path modelFolder);

  /// Like `stop`.
  ~VoskEngine();

  VoskEngine(const VoskEngine&) = delete;
  VoskEngine& operator=(const VoskEngine&) = delete;

  /// Whether the model is loaded, and why not.
  const Outcome& loading() const { return loading_; }

  /// Whether no dictation is running or waiting to deliver its last report.
  bool isIdle() const;

  /// Decodes what `request` carries and reports to `task`, which it keeps until the task is over. Does
  /// nothing after `stop`.
  void recognize(std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request);

  /// Cancels all dictations and ends the thread. Waits for the running decode or load.
  void stop();

 private:
  using Dictations = std::vector<std::shared_ptr<VoskDictation>>;

  void wake();
  void run();
  std::string load();
  bool stepAll(const Dictations& dictations);

  const std::string libraryFile_;
  const std::filesystem::path modelFolder_;
  Outcome loading_;

  // Engine thread.
  std::unique_ptr<const VoskLibrary> library_;
  std::unique_ptr<const LoadedModel> model_;

  mutable std::mutex mutex_;
  std::condition_variable woken_;
  Dictations dictations_;
  bool wakeUp_ = false;
  bool stopping_ = false;

  std::thread thread_;
};

}  // namespace tavelo::recognizer
