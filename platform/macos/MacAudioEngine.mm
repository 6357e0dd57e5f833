#import "platform/macos/MacAudioEngine.h"

#include <utility>

#import "platform/macos/FoundationText.h"
#import "platform/macos/SoundBuffer.h"

namespace tavelo::macos {
namespace {

constexpr const char* noInput = "Không có thiết bị thu âm.";
constexpr const char* unknownFailure = "Thiết bị thu âm gặp lỗi.";

}  // namespace

MacAudioEngine::MacAudioEngine(platform::MainQueue& mainQueue, std::function<void()> interrupted)
    : mainQueue_(mainQueue), interrupted_(std::move(interrupted)) {
  makeEngine();
}

void MacAudioEngine::makeEngine() {
  if (observer_ != nil) [NSNotificationCenter.defaultCenter removeObserver:observer_];
  engine_ = [[AVAudioEngine alloc] init];
  isOutdated_ = false;
  // Posted on a thread of the engine's own.
  auto changed = lifetime_.guard([this, generation = ++generation_] {
    if (generation != generation_) return;
    isOutdated_ = true;
    if (std::exchange(isRunning_, false)) interrupted_();
  });
  platform::MainQueue* queue = &mainQueue_;
  observer_ =
      [NSNotificationCenter.defaultCenter addObserverForName:AVAudioEngineConfigurationChangeNotification
                                                      object:engine_
                                                       queue:nil
                                                  usingBlock:^(NSNotification*) {
                                                    queue->async(changed);
                                                  }];
}

MacAudioEngine::~MacAudioEngine() {
  [NSNotificationCenter.defaultCenter removeObserver:observer_];
  if (tap_) removeTap(0);
  stop();
}

/// The engine throws where others answer with an error.
template <class Step>
void MacAudioEngine::attempt(Step step) {
  @try {
    step();
  } @catch (NSException* exception) {
    const std::string reason = fromFoundation(exception.reason);
    failure_ = platform::PlatformError{reason.empty() ? unknownFailure : reason};
  }
}

platform::AudioFormat MacAudioEngine::inputFormat(platform::AudioBus bus) {
  format_ = nil;
  if (isOutdated_ && !isRunning_) makeEngine();
  attempt([&] { format_ = [engine_.inputNode outputFormatForBus:bus]; });
  if (format_ == nil) return {};
  return {format_.sampleRate, format_.channelCount};
}

void MacAudioEngine::installTap(platform::AudioBus bus, std::uint32_t bufferSize,
                                const platform::AudioFormat& format, TapBlock block) {
  failure_.reset();
  // With such a format the engine would throw.
  if (format_ == nil || !(format.sampleRate > 0) || format.channelCount == 0) {
    failure_ = platform::PlatformError{noInput};
    return;
  }
  const auto tap = std::make_shared<Tap>();
  tap->block = std::move(block);
  // Made out here: a block inside the lambda would hold a reference to the lambda's `tap`.
  const AVAudioNodeTapBlock deliver = ^(AVAudioPCMBuffer* buffer, AVAudioTime*) {
    const std::lock_guard lock{tap->mutex};
    if (tap->block) tap->block(fromSystem(buffer));
  };
  attempt(
      [&] { [engine_.inputNode installTapOnBus:bus bufferSize:bufferSize format:format_ block:deliver]; });
  tap_ = tap;
}

void MacAudioEngine::removeTap(platform::AudioBus bus) {
  attempt([&] { [engine_.inputNode removeTapOnBus:bus]; });
  if (!tap_) return;
  {
    const std::lock_guard lock{tap_->mutex};
    tap_->block = {};
  }
  tap_.reset();
}

void MacAudioEngine::prepare() {
  if (failure_) return;
  attempt([&] { [engine_ prepare]; });
}

std::optional<platform::PlatformError> MacAudioEngine::start() {
  if (failure_) return failure_;
  attempt([&] {
    NSError* error = nil;
    if ([engine_ startAndReturnError:&error]) return;
    const std::string reason = fromFoundation(error.localizedDescription);
    failure_ = platform::PlatformError{reason.empty() ? unknownFailure : reason};
  });
  isRunning_ = !failure_;
  return failure_;
}

void MacAudioEngine::stop() {
  isRunning_ = false;
  attempt([&] { [engine_ stop]; });
}

}  // namespace tavelo::macos
