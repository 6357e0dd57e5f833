#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "platform/Audio.h"

struct pa_mainloop;

namespace tavelo::linuxdesktop {

/// Captures an input, on a thread of its own. While nothing is captured, the thread sleeps and has
/// no connection. Main thread, except for the tap block, which runs on that thread.
///
/// If the device or the sound server goes away during a capture, the engine retries with the chosen input or
/// whatever is the default then, until it succeeds or the capture is stopped. Until then it delivers nothing.
class LinuxAudioEngine final : public platform::AudioEngine {
 public:
  /// `source` is what the sound server calls the input, now and whenever a capture starts. Without such a
  /// source, the default input is captured.
  explicit LinuxAudioEngine(std::shared_ptr<const std::string> source) : source_(std::move(source)) {}
  ~LinuxAudioEngine() override;
  LinuxAudioEngine(const LinuxAudioEngine&) = delete;
  LinuxAudioEngine& operator=(const LinuxAudioEngine&) = delete;

  /// 16 kHz mono for every device: the sound server converts.
  platform::AudioFormat inputFormat(platform::AudioBus bus) override;

  /// Ignores size and format: delivers pieces of about 20 ms in `inputFormat`.
  void installTap(platform::AudioBus bus, std::uint32_t bufferSize, const platform::AudioFormat& format,
                  TapBlock block) override;
  void removeTap(platform::AudioBus bus) override;

  /// Starts the thread.
  void prepare() override;

  /// Waits until the sound server records; at most 300 ms.
  std::optional<platform::PlatformError> start() override;

  /// Waits for the sound that the microphone still holds, at most 40 ms.
  void stop() override;

  /// The source that the last successful `start` opened, as the sound server calls it.
  std::string captured() const { return captured_; }

 private:
  /// A capture's number; 0 for no capture.
  using Capture = std::uint64_t;
  /// Whether opening a capture succeeded.
  struct Opening {
    Capture capture = 0;
    std::optional<platform::PlatformError> error;
    std::string source;
  };

  void run();
  void record(Capture capture, const std::string& source);
  void settle(Opening opening);
  void deliver(Capture capture, const platform::AudioBuffer& buffer);
  void endCapture();

  const std::shared_ptr<const std::string> source_;
  std::string captured_;

  std::mutex tapMutex_;
  TapBlock tap_;

  std::mutex mutex_;
  std::condition_variable changed_;
  /// The capture that should run now. Written under the mutex.
  std::atomic<Capture> wanted_ = 0;
  Capture last_ = 0;
  /// The source that it should record.
  std::string wantedSource_;
  Opening opening_;
  bool ending_ = false;
  /// Counts the pieces of sound that were delivered.
  std::uint64_t pieces_ = 0;
  /// The loop that the thread runs; null while the thread sleeps.
  pa_mainloop* loop_ = nullptr;

  std::thread thread_;
};

}  // namespace tavelo::linuxdesktop
