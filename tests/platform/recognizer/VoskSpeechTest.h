#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/recognizer/VoskSpeech.h"
#include "tests/platform/recognizer/CountedNotifications.h"
#include "tests/platform/recognizer/FakeModel.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"
#include "tests/platform/recognizer/ReportedDictation.h"

namespace tavelo::recognizer {

/// A dictation whose buffers are 16 kHz mono sound. Their numbers show in the library's calls.
struct NumberedDictation : ReportedDictation {
  using ReportedDictation::ReportedDictation;

  /// Appends the buffers 1 to `count`.
  void append(int count) const {
    for (int i = 1; i <= count; ++i) request->append({{16000, 1}, {static_cast<std::int16_t>(i), 0, 0, 0}});
  }
};

/// Recognition with the scripted library.
class VoskSpeechTest : public testing::Test {
 protected:
  std::unique_ptr<VoskSpeech> makeSpeech(const FakeModel& model) {
    auto speech = std::make_unique<VoskSpeech>(mainQueue, model.configuration());
    speech->notifyThrough(notifications);
    return speech;
  }

  /// The reports of a dictation of `buffers` buffers.
  std::vector<std::string> reportsOf(VoskSpeech& speech, int buffers, bool partialResults = true) {
    const NumberedDictation dictation{speech, partialResults};
    dictation.append(buffers);
    return dictation.finish(mainQueue);
  }

  /// Asks whether a Vietnamese recogniser is available, and checks that the answer comes in time.
  static bool isAvailable(VoskSpeech& speech) {
    // The main thread waits 250 ms at most; the rest is for a busy machine.
    constexpr std::chrono::milliseconds answerLimit{1000};
    const auto recognizer = speech.makeRecognizer("vi_VN");
    const auto asked = std::chrono::steady_clock::now();
    const bool available = recognizer->isAvailable();
    EXPECT_LT(std::chrono::steady_clock::now() - asked, answerLimit);
    return available;
  }

  CountedNotifications notifications;
  PumpedMainQueue mainQueue;
};

}  // namespace tavelo::recognizer
