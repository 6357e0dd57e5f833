#include "platform/simulated/SimulatedAudioEngine.h"

#include <string>
#include <utility>

#include "platform/simulated/Rules.h"
#include "platform/simulated/SimulatedMicrophone.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

constexpr std::uint32_t defaultBufferSize = 1024;

}  // namespace

SimulatedAudioEngine::SimulatedAudioEngine(World& world, SimulatedMicrophone& microphone)
    : world_(world), microphone_(microphone), bufferSize_(defaultBufferSize) {}

SimulatedAudioEngine::~SimulatedAudioEngine() { stop(); }

platform::AudioFormat SimulatedAudioEngine::inputFormat(platform::AudioBus bus) {
  requireBus(bus, "AudioEngine::inputFormat");
  return SimulatedMicrophone::format;
}

void SimulatedAudioEngine::installTap(platform::AudioBus bus, std::uint32_t bufferSize,
                                      const platform::AudioFormat&, TapBlock block) {
  requireBus(bus, "AudioEngine::installTap");
  const std::lock_guard lock{tapMutex_};
  if (tap_) rules::broken("a second tap on an audio bus");
  tap_ = std::move(block);
  microphone_.setHasTap(true);
  bufferSize_ = bufferSize == 0 ? defaultBufferSize : bufferSize;
}

void SimulatedAudioEngine::removeTap(platform::AudioBus bus) {
  requireBus(bus, "AudioEngine::removeTap");
  const std::lock_guard lock{tapMutex_};
  tap_ = nullptr;
  microphone_.setHasTap(false);
}

void SimulatedAudioEngine::prepare() { world_.requireMainThread("AudioEngine::prepare"); }

std::optional<platform::PlatformError> SimulatedAudioEngine::start() {
  world_.requireMainThread("AudioEngine::start");
  if (capture_) return std::nullopt;
  if (const auto& failure = microphone_.startFailure()) {
    world_.report(WorldEvent::Kind::microphone, "cannot be opened: " + *failure);
    return platform::PlatformError{*failure};
  }
  microphone_.began();
  started_ = world_.loop().uptime();
  framesHeard_ = 0;
  framesOfBuffer_ = bufferSize_;
  capture_ = world_.loop().startTicker(instantOf(framesOfBuffer_), [this] { return deliver(); });
  return std::nullopt;
}

void SimulatedAudioEngine::stop() {
  world_.requireMainThread("AudioEngine::stop");
  if (!capture_) return;
  capture_.reset();
  microphone_.ended();
}

std::optional<platform::Uptime> SimulatedAudioEngine::deliver() {
  const std::lock_guard lock{tapMutex_};
  const platform::AudioBuffer buffer = microphone_.take(framesOfBuffer_);
  framesHeard_ += framesOfBuffer_;
  if (tap_) tap_(buffer);
  framesOfBuffer_ = bufferSize_;
  return instantOf(framesHeard_ + framesOfBuffer_);
}

platform::Uptime SimulatedAudioEngine::instantOf(std::uint64_t frames) const {
  return started_ + platform::toUptime(platform::Seconds{static_cast<double>(frames) /
                                                         SimulatedMicrophone::format.sampleRate});
}

void SimulatedAudioEngine::requireBus(platform::AudioBus bus, const char* operation) const {
  world_.requireMainThread(operation);
  if (bus != 0) rules::broken(std::string{operation} + " on bus " + std::to_string(bus));
}

}  // namespace tavelo::simulated
