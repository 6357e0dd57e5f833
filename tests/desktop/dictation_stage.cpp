// Dictates on command with the desktop's own microphone and recogniser: "start" and "stop"
// on standard input. What becomes of it is told in lines on standard output, with times in milliseconds.
// Needs no display.

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "app/SpeechWiring.h"
#include "platform/linux/audio/LinuxAudio.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/desktop/CommandReader.h"

namespace tavelo {
namespace {

/// As the speech controller does it, with every step timed.
class DictationStage final {
 private:
  void start() {
    began_ = clock_.uptime();
    const auto recognizer = speech_.speech->makeRecognizer("vi_VN");
    if (!recognizer || !recognizer->isAvailable())
      return tell("unavailable", elapsed() + " " + speech_.failure("vi_VN", {}));
    tell("available", elapsed());
    request_ = speech_.speech->makeAudioBufferRecognitionRequest();
    request_->setShouldReportPartialResults(true);
    buffers_ = 0;
    tellAgainAt_ = {};
    engine_->installTap(0, 1024, engine_->inputFormat(0), [this](const auto& buffer) { hear(buffer); });
    engine_->prepare();
    if (const auto error = engine_->start())
      return tell("refused", elapsed() + " " + error->localizedDescription);
    tell("listening", elapsed());
    task_ = recognizer->recognitionTask(request_, [](const auto& result, const auto& error) {
      if (result) tell(result->isFinal ? "final" : "partial", result->formattedString);
      if (error) tell("failed", error->localizedDescription);
    });
  }

  void stop() {
    began_ = clock_.uptime();
    engine_->stop();
    engine_->removeTap(0);
    if (request_) request_->endAudio();
    tell("stopped", elapsed() + " ms, buffers " + std::to_string(buffers_));
  }

  /// On the capture thread: tells of the first buffer, and of loud ones, once a second.
  void hear(const platform::AudioBuffer& buffer) {
    request_->append(buffer);
    if (++buffers_ == 1) tell("first", elapsed() + " ms, frames " + std::to_string(buffer.samples.size()));
    const bool loud = std::ranges::any_of(buffer.samples, [](int sample) { return std::abs(sample) > 500; });
    if (!loud || clock_.uptime() < tellAgainAt_) return;
    tell("sound", elapsed());
    tellAgainAt_ = clock_.uptime() + std::chrono::seconds{1};
  }

  std::string elapsed() const { return std::to_string((clock_.uptime() - began_).count() / 1'000'000); }

  const posix::SystemClock clock_;
  qt::QtMainQueue queue_{clock_};
  ConfiguredSpeech speech_ = makeConfiguredSpeech(queue_, std::nullopt, settings::Settings(std::nullopt));
  linuxdesktop::LinuxAudio audio_;
  std::unique_ptr<platform::AudioEngine> engine_ = audio_.makeEngine();
  platform::Uptime began_{};
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request_;
  std::shared_ptr<platform::SpeechRecognitionTask> task_;
  int buffers_ = 0;
  platform::Uptime tellAgainAt_{};
  const CommandReader reader_{
      queue_, [this](const auto& command, const auto&) { command == "start" ? start() : stop(); }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const tavelo::DictationStage stage;
  return QCoreApplication::exec();
}
