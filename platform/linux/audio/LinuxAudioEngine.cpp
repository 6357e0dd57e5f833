#include "platform/linux/audio/LinuxAudioEngine.h"

#include <chrono>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/linux/audio/PulseRecording.h"

namespace tavelo::linuxdesktop {
namespace {

using Clock = std::chrono::steady_clock;

/// How long the main thread may wait for the sound server. A working one needs a tenth of this.
constexpr std::chrono::milliseconds openingLimit{300};
constexpr const char* serverIsSilent = "Dịch vụ âm thanh không trả lời.";
constexpr const char* noThread = "Hệ thống không đủ tài nguyên để ghi âm.";

/// Two pieces: the next one holds what was said until now. Together with the recogniser's last word it stays
/// under 300 ms.
constexpr std::chrono::milliseconds lastSoundLimit{40};

/// Between a failure during a capture and the next try.
constexpr std::chrono::milliseconds reopeningInterval{250};
/// Much longer than the 20 ms between two pieces of sound.
constexpr int loopLimitMicroseconds = 100'000;

struct FreeLoop {
  void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
};

/// Waits for events, at most as long as the limit, and handles them; false if the loop has failed.
bool turn(pa_mainloop* loop) {
  return pa_mainloop_prepare(loop, loopLimitMicroseconds) >= 0 && pa_mainloop_poll(loop) >= 0 &&
         pa_mainloop_dispatch(loop) >= 0;
}

}  // namespace

LinuxAudioEngine::~LinuxAudioEngine() {
  stop();
  {
    const std::lock_guard lock{mutex_};
    ending_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

platform::AudioFormat LinuxAudioEngine::inputFormat(platform::AudioBus) { return PulseRecording::format; }

void LinuxAudioEngine::installTap(platform::AudioBus, std::uint32_t, const platform::AudioFormat&,
                                  TapBlock block) {
  const std::lock_guard lock{tapMutex_};
  tap_ = std::move(block);
}

void LinuxAudioEngine::removeTap(platform::AudioBus) {
  // The block runs under this lock, so it is not running once we have it.
  const std::lock_guard lock{tapMutex_};
  tap_ = nullptr;
}

void LinuxAudioEngine::prepare() {
  if (thread_.joinable()) return;
  try {
    thread_ = std::thread{[this] { run(); }};
  } catch (const std::system_error&) {
    // `start` reports it.
  }
}

std::optional<platform::PlatformError> LinuxAudioEngine::start() {
  prepare();
  if (!thread_.joinable()) return platform::PlatformError{noThread};
  std::unique_lock lock{mutex_};
  if (wanted_ != 0) return std::nullopt;
  wantedSource_ = *source_;
  const Capture capture = wanted_ = ++last_;
  changed_.notify_all();
  if (!changed_.wait_for(lock, openingLimit, [&] { return opening_.capture == capture; })) {
    endCapture();
    return platform::PlatformError{serverIsSilent};
  }
  if (opening_.error) endCapture();
  captured_ = opening_.source;
  return opening_.error;
}

void LinuxAudioEngine::stop() {
  std::unique_lock lock{mutex_};
  if (wanted_ == 0) return;
  const auto before = pieces_;
  changed_.wait_for(lock, lastSoundLimit, [&] { return pieces_ > before; });
  endCapture();
}

void LinuxAudioEngine::run() {
  std::unique_lock lock{mutex_};
  while (true) {
    changed_.wait(lock, [this] { return ending_ || wanted_ != 0; });
    if (ending_) return;
    const Capture capture = wanted_;
    const std::string source = wantedSource_;
    lock.unlock();
    record(capture, source);
    lock.lock();
    // A capture that failed to open stays wanted until `start` has read the error.
    changed_.wait(lock, [&] { return ending_ || wanted_ != capture; });
  }
}

void LinuxAudioEngine::record(Capture capture, const std::string& source) {
  const std::unique_ptr<pa_mainloop, FreeLoop> loop{pa_mainloop_new()};
  if (!loop) return settle({capture, platform::PlatformError{noThread}, {}});
  {
    const std::lock_guard lock{mutex_};
    loop_ = loop.get();
  }
  const auto open = [&] {
    return std::make_unique<PulseRecording>(
        *pa_mainloop_get_api(loop.get()), source,
        [this, capture](const platform::AudioBuffer& buffer) { deliver(capture, buffer); });
  };
  auto recording = open();
  bool settled = false;
  auto reopenAt = Clock::now();
  do {
    if (!recording && Clock::now() >= reopenAt) recording = open();
    if (!recording || recording->state() == PulseRecording::State::opening) continue;
    const bool failed = recording->state() == PulseRecording::State::failed;
    if (!settled)
      settle({capture, failed ? std::optional{recording->error()} : std::nullopt, recording->source()});
    if (failed && !settled) break;
    settled = true;
    if (!failed) continue;
    recording.reset();
    reopenAt = Clock::now() + reopeningInterval;
  } while (wanted_ == capture && turn(loop.get()));
  const std::lock_guard lock{mutex_};
  loop_ = nullptr;
}

void LinuxAudioEngine::settle(Opening opening) {
  {
    const std::lock_guard lock{mutex_};
    opening_ = std::move(opening);
  }
  changed_.notify_all();
}

void LinuxAudioEngine::deliver(Capture capture, const platform::AudioBuffer& buffer) {
  const std::lock_guard lock{tapMutex_};
  if (!tap_ || wanted_ != capture) return;
  tap_(buffer);
  {
    const std::lock_guard counting{mutex_};
    ++pieces_;
  }
  changed_.notify_all();
}

/// The caller holds the mutex.
void LinuxAudioEngine::endCapture() {
  wanted_ = 0;
  changed_.notify_all();
  if (loop_ != nullptr) pa_mainloop_wakeup(loop_);
}

}  // namespace tavelo::linuxdesktop
