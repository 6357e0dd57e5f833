#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::platform {

/// Whether the program may capture sound, with macOS's raw values.
enum class CaptureAuthorizationStatus : std::int32_t {
  notDetermined = 0,
  restricted = 1,
  denied = 2,
  authorized = 3
};

/// An input bus of the engine; the program uses only bus 0.
using AudioBus = std::uint32_t;

/// Captures the default input device. One engine serves many dictations. Main thread, except the tap block.
class AudioEngine {
 public:
  /// Called with each captured buffer on the engine's capture thread; must not block.
  using TapBlock = std::function<void(const AudioBuffer&)>;

  virtual ~AudioEngine() = default;

  /// The format in which the input node delivers on `bus`.
  virtual AudioFormat inputFormat(AudioBus bus) = 0;

  /// Installs the tap. `bufferSize`, in frames, is only a hint. A bus has at most one tap: remove the old one
  /// first.
  virtual void installTap(AudioBus bus, std::uint32_t bufferSize, const AudioFormat& format,
                          TapBlock block) = 0;

  /// Removes the tap, if there is one. Its block is not called after this returns.
  virtual void removeTap(AudioBus bus) = 0;

  /// Prepares the engine, so that `start` is quick.
  virtual void prepare() = 0;

  /// Starts capturing. Returns the error; absent on success.
  virtual std::optional<PlatformError> start() = 0;

  /// Stops capturing; does nothing if already stopped.
  virtual void stop() = 0;
};

/// Sound input and the permission for it.
class Audio {
 public:
  virtual ~Audio() = default;

  /// The current permission. Never prompts. Main thread.
  virtual CaptureAuthorizationStatus captureAuthorizationStatus() = 0;

  /// Asks the user if the permission is undecided. Calls `completion` once, on any thread; never, if the user
  /// does not answer. Main thread.
  virtual void requestCaptureAccess(std::function<void(bool granted)> completion) = 0;

  /// Makes an engine that is not started. Never null. Main thread.
  virtual std::unique_ptr<AudioEngine> makeEngine() = 0;
};

}  // namespace tavelo::platform
