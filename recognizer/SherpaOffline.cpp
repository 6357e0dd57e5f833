#include "recognizer/SherpaOffline.h"

#include <algorithm>
#include <cstdint>

#include "language/Language.h"
#include "language/Texts.h"
#include "unicode/Unicode.h"

namespace tavelo::recognition::sherpa {
namespace {

constexpr std::int32_t modelRate = 16000;
constexpr std::int32_t modelFeatures = 80;

Seconds now() { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace

std::vector<float> toFloats(std::span<const std::int16_t> samples) {
  constexpr float full = 32768;
  std::vector<float> floats(samples.size());
  std::transform(samples.begin(), samples.end(), floats.begin(),
                 [](std::int16_t sample) { return sample / full; });
  return floats;
}

EngineLoading OfflineEngine::load(std::unique_ptr<const Library> library, const ModelFolder& model) {
  Padded<OfflineConfig> padded{};
  auto& config = padded.config;
  config.sampleRate = modelRate;
  config.featureDimension = modelFeatures;
  config.transducer = {model.encoder.c_str(), model.decoder.c_str(), model.joiner.c_str()};
  config.tokens = model.tokens.c_str();
  config.threads = 1;
  config.provider = "cpu";
  // Without it the library loads the encoder twice.
  config.modelType = "transducer";

  const Recognizer* recognizer = nullptr;
  auto failure = guarded([&] { recognizer = library->functions().createOffline(&config); });
  if (!failure.empty()) return {nullptr, failure};
  if (recognizer == nullptr) return {nullptr, language::say(language::words::refusesFiles)};
  Owned<Recognizer> owned{recognizer, library->functions().destroyOffline};
  std::unique_ptr<OfflineEngine> engine{new OfflineEngine{std::move(library), std::move(owned)}};
  failure = engine->findShortest();
  if (!failure.empty()) return {nullptr, failure};
  return {std::move(engine), {}};
}

/// Decodes silence of growing length until the model takes it. Returns why it takes none of them.
std::string OfflineEngine::findShortest() {
  std::string failure;
  for (const double seconds : {0.2, 0.4, 0.8, 1.6}) {
    const std::vector<float> silence(static_cast<std::size_t>(seconds * modelRate));
    shortest_ = Seconds{seconds};
    failure = decode(modelRate, silence).failure;
    if (failure.empty()) break;
  }
  return failure;
}

std::unique_ptr<Dictation> OfflineEngine::begin(std::uint32_t sampleRate, Listener& listener) {
  return std::make_unique<SegmentedDictation>(
      sampleRate,
      [this, sampleRate](std::span<const std::int16_t> samples) {
        return decodeSegment(sampleRate, samples);
      },
      pace_, listener, now);
}

Decoded OfflineEngine::decodeSegment(std::uint32_t sampleRate, std::span<const std::int16_t> samples) const {
  if (static_cast<double>(samples.size()) < shortest_.count() * sampleRate) return {};
  return decode(sampleRate, toFloats(samples));
}

Decoded OfflineEngine::decode(std::uint32_t sampleRate, std::span<const float> samples) const {
  const Functions& library = library_->functions();
  Decoded decoded;
  decoded.failure = guarded([&] {
    const Owned<Stream> stream{library.createOfflineStream(recognizer_.get()), library.destroyOfflineStream};
    library.acceptOffline(stream.get(), static_cast<std::int32_t>(sampleRate), samples.data(),
                          static_cast<std::int32_t>(samples.size()));
    library.decodeOffline(recognizer_.get(), stream.get());
    const Owned<Result> result{library.offlineResult(stream.get()), library.destroyOfflineResult};
    if (result && result->text != nullptr) decoded.text = unicode::lowerCased(result->text);
  });
  return decoded;
}

}  // namespace tavelo::recognition::sherpa
