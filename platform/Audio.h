#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/AudioBuffer.h"
#include "platform/PlatformError.h"

namespace tavelo::platform {

/// Whether the program may capture sound; raw values are the platform's.
enum class CaptureAuthorizationStatus : std::int32_t {
  notDetermined = 0,
  restricted = 1,
  denied = 2,
  authorized = 3
};

/// An input bus of the engine; the program uses bus 0 only.
using AudioBus = std::uint32_t;

/// Captures the default input device. One engine serves many dictations. Main thread, but for the tap block.
class AudioEngine {
 public:
  /// Called with each captured buffer on the engine's capture thread; must not block.
  using TapBlock = std::function<void(const AudioBuffer&)>;

  virtual ~AudioEngine() = default;

  /// The format in which the input node delivers on `bus`.
  virtual AudioFormat inputFormat(AudioBus bus) = 0;

  /// Installs the tap; `bufferSize` in frames is a wish. At most one tap a bus: remove an old one first.
  virtual void installTap(AudioBus bus, std::uint32_t bufferSize, const AudioFormat& format,
                          TapBlock block) = 0;

  /// Removes the tap, if there is one. No call of its block begins after this returns.
  virtual void removeTap(AudioBus bus) = 0;

  /// Takes what the engine needs, so that the start is quick.
  virtual void prepare() = 0;

  /// Starts capturing; absent when it worked, else why not.
  virtual std::optional<PlatformError> start() = 0;

  /// Stops capturing; does nothing when stopped.
  virtual void stop() = 0;
};

/// Sound input and the permission for it.
class Audio {
 public:
  virtual ~Audio() = default;

  /// The permission as it stands; shows nothing. Main thread.
  virtual CaptureAuthorizationStatus captureAuthorizationStatus() = 0;

  /// Asks the user, when that has not been decided; `completion` gets the answer exactly once, on any thread,
  /// possibly never when the user does not answer. Main thread.
  virtual void requestCaptureAccess(std::function<void(bool granted)> completion) = 0;

  /// A new engine, not started. Never null. Main thread.
  virtual std::unique_ptr<AudioEngine> makeEngine() = 0;
};

}  // namespace tavelo::platform
