#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <pulse/pulseaudio.h>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::linuxdesktop {

/// One recording of an input, with its own connection to the sound server. Never waits: it makes
/// progress whenever its main loop runs. Use it only on the main loop's thread.
class PulseRecording final {
 public:
  enum class State : std::uint8_t { opening, recording, failed };

  /// What the server delivers; it converts from the device's format.
  static constexpr platform::AudioFormat format{.sampleRate = 16000, .channelCount = 1};

  /// Starts to connect. `source` is what the sound server calls the input; if it is empty or there is no such
  /// source, the default input is used. `heard` gets the sound in pieces of about 20 ms. `loop` must outlive
  /// this object.
  PulseRecording(pa_mainloop_api& loop, std::string source,
                 std::function<void(const platform::AudioBuffer&)> heard);
  ~PulseRecording();
  PulseRecording(const PulseRecording&) = delete;
  PulseRecording& operator=(const PulseRecording&) = delete;

  State state() const { return state_; }

  /// The source that is recorded, as the sound server calls it; empty until `state` is `recording`.
  std::string source() const;

  /// What to tell the user when the state is `failed`.
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

  const std::string wanted_;
  std::function<void(const platform::AudioBuffer&)> heard_;
  State state_ = State::opening;
  bool deviceSeen_ = false;
  bool wantedSeen_ = false;
  platform::PlatformError error_;
  platform::AudioBuffer buffer_{.format = format, .samples = {}};
  std::unique_ptr<pa_context, Release> context_;
  std::unique_ptr<pa_stream, Release> stream_;
};

}  // namespace tavelo::linuxdesktop
