#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/RecognitionTask.h"
#include "platform/recognizer/RecognizerProcess.h"
#include "platform/recognizer/RunningTranscript.h"

namespace tavelo::recognizer {

/// One dictation of the recogniser process: sends its sound and reports its transcript. Keeps the sound since
/// the last closed segment, so that another process can go on with it. Engine thread.
class ProcessDictation final {
 public:
  ProcessDictation(std::shared_ptr<RecognitionTask> task,
                   std::shared_ptr<platform::BufferedRecognitionRequest> request)
      : task_(std::move(task)), request_(std::move(request)) {}
  ~ProcessDictation() { request_->onArrival({}); }
  ProcessDictation(const ProcessDictation&) = delete;
  ProcessDictation& operator=(const ProcessDictation&) = delete;

  RecognitionTask& task() const { return *task_; }
  /// Whether its last report was made.
  bool isFinished() const { return finished_; }
  bool hasSentEnd() const { return endSent_; }
  /// Whether so much sound waits in the process that it gets no more for now.
  bool isHeldBack() const;

  /// Sends what the process can take now, as the dictation of that number. Fails the task if the sound has no
  /// usable format.
  void feed(RecognizerProcess& process, std::uint32_t number);

  /// Takes a reply of the process. Returns false if it does not fit what was sent.
  bool hear(const ProcessReply& reply);

  /// `reason` is a sentence for the user.
  void fail(const char* reason);

  /// The process is gone: begins again with the next one. Returns false if that was tried often enough.
  bool restart();

 private:
  bool hasBegun() const { return number_ != 0; }
  void begin(RecognizerProcess& process, std::uint32_t number);
  bool add(const platform::AudioBuffer& buffer);
  void forgetUntil(std::uint64_t sample);

  const std::shared_ptr<RecognitionTask> task_;
  const std::shared_ptr<platform::BufferedRecognitionRequest> request_;
  RunningTranscript transcript_;
  std::optional<std::uint32_t> sampleRate_;
  /// The sound since the last closed segment, and how much of it this process was sent.
  std::vector<std::int16_t> kept_;
  std::size_t sent_ = 0;
  /// Whether `kept_` begins later than the current segment.
  bool incomplete_ = false;
  /// How much sound of this process's dictation the process has taken out of its own queue, as far as it
  /// said.
  std::uint64_t taken_ = 0;
  /// How much sound of this process's dictation was forgotten.
  std::uint64_t forgotten_ = 0;
  /// 0 while this process does not know the dictation.
  std::uint32_t number_ = 0;
  bool endSent_ = false;
  bool finished_ = false;
  int restarts_ = 0;
};

}  // namespace tavelo::recognizer
