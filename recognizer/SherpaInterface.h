#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The part of sherpa-onnx's C interface that we use, as of version 1.13. Its headers are not needed to
/// build.
///
/// The library gives no sign when a version lays its structures out differently; `SherpaLayout` finds out.
/// Members that we never set are left out here as room of the same size.
namespace tavelo::recognition::sherpa {

/// The files of a model. A null string reads as empty, 0 as the default.
struct Transducer {
  const char* encoder;
  const char* decoder;
  const char* joiner;
};

struct OfflineConfig {
  std::int32_t sampleRate;
  std::int32_t featureDimension;
  Transducer transducer;
  std::array<std::byte, 72> otherModels;
  const char* tokens;
  std::int32_t threads;
  std::int32_t debug;
  const char* provider;
  const char* modelType;
};
static_assert(offsetof(OfflineConfig, tokens) == 8 + 96);
static_assert(offsetof(OfflineConfig, modelType) == 8 + 120);

struct OnlineConfig {
  std::int32_t sampleRate;
  std::int32_t featureDimension;
  Transducer transducer;
  std::array<std::byte, 24> otherModels;
  const char* tokens;
  std::int32_t threads;
  const char* provider;
  std::int32_t debug;
  const char* modelType;
  std::array<std::byte, 48> otherSettings;
  const char* decodingMethod;
  std::int32_t activePaths;
  std::int32_t endpoints;
  /// In seconds: silence that ends a segment without and with words, and the length that ends any.
  float silenceWithoutWords;
  float silenceAfterWords;
  float longestSegment;
};
static_assert(offsetof(OnlineConfig, tokens) == 8 + 48);
static_assert(offsetof(OnlineConfig, decodingMethod) == 144);
static_assert(offsetof(OnlineConfig, silenceWithoutWords) == 160);

/// A configuration with zeros behind it, which is what members read as that a newer version adds at the end.
template <class Config>
struct Padded {
  Config config;
  std::array<std::byte, 4096 - sizeof(Config)> zeros;
};

struct Recognizer;
struct Stream;
/// Only the first member is ours to read.
struct Result {
  const char* text;
};

}  // namespace tavelo::recognition::sherpa
