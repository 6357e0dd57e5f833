#pragma once

#include <memory>
#include <mutex>
#include <optional>

#import <AVFAudio/AVFAudio.h>

#include "platform/Audio.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"

namespace tavelo::macos {

/// The system's audio engine, a new one after each change of the device: the old one may still give the
/// format of the device that has gone. An input without a format, and an exception of the engine's, become
/// the error of the next start. Main thread, except the tap block.
class MacAudioEngine final : public platform::AudioEngine {
 public:
  /// Calls `interrupted` on the main queue when the device changes while the engine runs.
  MacAudioEngine(platform::MainQueue& mainQueue, std::function<void()> interrupted);
  ~MacAudioEngine() override;
  MacAudioEngine(const MacAudioEngine&) = delete;
  MacAudioEngine& operator=(const MacAudioEngine&) = delete;

  platform::AudioFormat inputFormat(platform::AudioBus bus) override;
  void installTap(platform::AudioBus bus, std::uint32_t bufferSize, const platform::AudioFormat& format,
                  TapBlock block) override;
  void removeTap(platform::AudioBus bus) override;
  void prepare() override;
  std::optional<platform::PlatformError> start() override;
  void stop() override;

 private:
  /// The block of the current tap; the system may still be inside a call when the tap is removed.
  struct Tap {
    std::mutex mutex;
    TapBlock block;
  };

  void makeEngine();
  template <class Step>
  void attempt(Step step);

  platform::MainQueue& mainQueue_;
  const std::function<void()> interrupted_;
  AVAudioEngine* engine_ = nil;
  /// Counts the engines: what an old one still posts is of no interest.
  unsigned generation_ = 0;
  bool isOutdated_ = false;
  /// As the input node said it last, since a tap wants that very format.
  AVAudioFormat* format_ = nil;
  id<NSObject> observer_ = nil;
  std::shared_ptr<Tap> tap_;
  std::optional<platform::PlatformError> failure_;
  bool isRunning_ = false;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::macos
