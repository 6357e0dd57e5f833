#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <pulse/pulseaudio.h>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::linuxdesktop {

/// A recording of the default input on a connection of its own to the sound server, from connecting to
/// letting go. Never waits: it goes on whenever its main loop runs. The main loop's thread only.
class PulseRecording final {
 public:
  enum class State : std::uint8_t { opening, recording, failed };

  /// What the server delivers, whatever the device has: it converts.
  static constexpr platform::AudioFormat format{.sampleRate = 16000, .channelCount = 1};

  /// Begins to connect. `heard` gets the sound in pieces of about 20 ms. `loop` must outlive this.
  PulseRecording(pa_mainloop_api& loop, std::function<void(const platform::AudioBuffer&)> heard);
  ~PulseRecording();
  PulseRecording(const PulseRecording&) = delete;
  PulseRecording& operator=(const PulseRecording&) = delete;

  State state() const { return state_; }

  /// Why the state is `failed`, for the user.
  const platform::PlatformError& error() const { return error_; }

 private:
  struct Release {
    void operator()(pa_context* context) const;
    void operator()(pa_stream* stream) const;
  };

  void contextChanged();
  void lookForDevice(const pa_source_info* source, int end);
  void openStream();
  void streamChanged();
  void read();
  void fail(const char* reason);
  void failAsServerSays();

  std::function<void(const platform::AudioBuffer&)> heard_;
  State state_ = State::opening;
  bool deviceSeen_ = false;
  platform::PlatformError error_;
  platform::AudioBuffer buffer_{.format = format, .samples = {}};
  std::unique_ptr<pa_context, Release> context_;
  std::unique_ptr<pa_stream, Release> stream_;
};

}  // namespace tavelo::linuxdesktop
