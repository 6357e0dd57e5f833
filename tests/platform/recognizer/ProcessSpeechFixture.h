#pragma once

#include <chrono>
#include <csignal>
#include <cstdint>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/recognizer/ProcessSpeech.h"
#include "tests/platform/recognizer/CountedNotifications.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReportedDictation.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::recognizer {

constexpr std::chrono::seconds patience{20};

/// Recognition by the scripted process; see ScriptedRecognizer.cpp.
class ProcessSpeechTest : public testing::Test {
 protected:
  ProcessSpeechTest() { speech_->notifyThrough(notifications_); }

  /// Says the words 1 to 6, with the end of a segment after 3, and waits for the last report.
  std::string dictate() {
    const ReportedDictation dictation{*speech_};
    for (const int word : {1, 2, 3, -1, 4, 5, 6})
      dictation.request->append({{16000, 1}, {static_cast<std::int16_t>(word), 0, 0, 0}});
    return dictation.finish(queue_).back();
  }
  void fault(const std::string& fault) const { folder_.write("fault", fault); }
  std::vector<pid_t> starts() const {
    std::istringstream lines{folder_.read("starts")};
    return {std::istream_iterator<pid_t>{lines}, {}};
  }
  /// Waits until the first process has stopped itself.
  pid_t stopped() const {
    while (starts().empty()) std::this_thread::yield();
    int status = 0;
    while (waitpid(starts()[0], &status, WUNTRACED) < 0 || !WIFSTOPPED(status)) std::this_thread::yield();
    return starts()[0];
  }
  static bool isGone(pid_t process) { return kill(process, 0) != 0; }

  TemporaryFolder folder_;
  const RecognizerLog log_{folder_.path() / "logs" / "recognizer.log"};
  CountedNotifications notifications_;
  PumpedMainQueue queue_;
  std::unique_ptr<ProcessSpeech> speech_ = std::make_unique<ProcessSpeech>(
      queue_, TAVELO_SCRIPTED_RECOGNIZER,
      ModelConfiguration{
          std::nullopt,
          [this](const std::string& name) { return name == "TAVELO_MODEL" ? folder_.path().string() : ""; }},
      log_);
};

}  // namespace tavelo::recognizer
