#import "platform/macos/SoundBuffer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tavelo::macos {
namespace {

constexpr float fullScale = 32768;

std::int16_t fromFloat(float sample) {
  // A sample that is no number would be undefined as a whole one.
  if (std::isnan(sample)) return 0;
  return static_cast<std::int16_t>(std::clamp(std::round(sample * fullScale), -fullScale, fullScale - 1));
}

}  // namespace

platform::AudioBuffer fromSystem(AVAudioPCMBuffer* buffer) {
  const std::size_t frames = buffer.frameLength;
  const std::size_t channels = buffer.format.channelCount;
  const std::size_t stride = buffer.stride;
  platform::AudioBuffer sound{{buffer.format.sampleRate, static_cast<std::uint32_t>(channels)}, {}};
  float* const* floats = buffer.floatChannelData;
  std::int16_t* const* integers = buffer.int16ChannelData;
  if (floats == nullptr && integers == nullptr) return sound;
  sound.samples.reserve(frames * channels);
  for (std::size_t frame = 0; frame < frames; ++frame) {
    for (std::size_t channel = 0; channel < channels; ++channel) {
      const std::size_t at = frame * stride;
      sound.samples.push_back(floats != nullptr ? fromFloat(floats[channel][at]) : integers[channel][at]);
    }
  }
  return sound;
}

AVAudioPCMBuffer* toSystem(const platform::AudioBuffer& buffer) {
  const std::size_t channels = buffer.format.channelCount;
  if (channels == 0 || !(buffer.format.sampleRate > 0)) return nil;
  const std::size_t frames = buffer.samples.size() / channels;
  if (frames == 0) return nil;
  AVAudioFormat* format =
      [[AVAudioFormat alloc] initStandardFormatWithSampleRate:buffer.format.sampleRate
                                                     channels:static_cast<AVAudioChannelCount>(channels)];
  if (format == nil) return nil;
  AVAudioPCMBuffer* sound =
      [[AVAudioPCMBuffer alloc] initWithPCMFormat:format
                                    frameCapacity:static_cast<AVAudioFrameCount>(frames)];
  if (sound == nil) return nil;
  sound.frameLength = static_cast<AVAudioFrameCount>(frames);
  float* const* data = sound.floatChannelData;
  if (data == nullptr) return nil;
  for (std::size_t frame = 0; frame < frames; ++frame) {
    for (std::size_t channel = 0; channel < channels; ++channel) {
      data[channel][frame] = static_cast<float>(buffer.samples[frame * channels + channel]) / fullScale;
    }
  }
  return sound;
}

}  // namespace tavelo::macos
