#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/Audio.h"

struct pa_mainloop;

namespace tavelo::linuxdesktop {

/// Captures the input that is the default when a capture starts, on a thread of its own that sleeps, without
/// a connection, while nothing is captured. Main thread, but for the tap block.
///
/// When the device or the sound server goes away in the middle, the capture stays and opens the input that
/// is the default then, again and again; until that works, nothing is heard.
class LinuxAudioEngine final : public platform::AudioEngine {
 public:
  LinuxAudioEngine() = default;
  ~LinuxAudioEngine() override;
  LinuxAudioEngine(const LinuxAudioEngine&) = delete;
  LinuxAudioEngine& operator=(const LinuxAudioEngine&) = delete;

  /// 16 kHz mono, whatever the device has: the sound server converts.
  platform::AudioFormat inputFormat(platform::AudioBus bus) override;

  /// The size and the format are the engine's own: pieces of about 20 ms in `inputFormat`.
  void installTap(platform::AudioBus bus, std::uint32_t bufferSize, const platform::AudioFormat& format,
                  TapBlock block) override;
  void removeTap(platform::AudioBus bus) override;

  /// Starts the thread.
  void prepare() override;

  /// Waits until the sound server records; at most 300 ms.
  std::optional<platform::PlatformError> start() override;

  /// Waits for nothing.
  void stop() override;

 private:
  /// A capture's number; 0 is none.
  using Capture = std::uint64_t;
  /// What opening a capture came to.
  struct Opening {
    Capture capture = 0;
    std::optional<platform::PlatformError> error;
  };

  void run();
  void record(Capture capture);
  void settle(Capture capture, std::optional<platform::PlatformError> error);
  void deliver(Capture capture, const platform::AudioBuffer& buffer);
  void endCapture();

  std::mutex tapMutex_;
  TapBlock tap_;

  std::mutex mutex_;
  std::condition_variable changed_;
  /// Changed under the mutex.
  std::atomic<Capture> wanted_ = 0;
  Capture last_ = 0;
  Opening opening_;
  bool ending_ = false;
  /// The loop that the thread runs; null while it sleeps.
  pa_mainloop* loop_ = nullptr;

  std::thread thread_;
};

}  // namespace tavelo::linuxdesktop
