#include "recognizer/SherpaOnline.h"

#include <cstdint>
#include <span>
#include <vector>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/SherpaOffline.h"
#include "unicode/Unicode.h"

namespace tavelo::recognition::sherpa {
namespace {

/// Silence around the sound. Without it the first syllable is lost when the key goes down late, and the last
/// one stays in the network when the key goes up early.
constexpr double silenceBefore = 0.5;
constexpr double silenceBehind = 0.6;

/// One dictation, decoded as its sound comes. The library finds the ends of the segments.
class OnlineDictation final : public Dictation {
 public:
  OnlineDictation(const Functions& library, const Recognizer* recognizer, Owned<Stream> stream,
                  std::uint32_t sampleRate, Listener& listener)
      : library_(library),
        recognizer_(recognizer),
        stream_(std::move(stream)),
        sampleRate_(sampleRate),
        listener_(listener) {}

  std::string accept(std::span<const std::int16_t> samples, bool /*moreWaits*/) override {
    return guarded([&] {
      if (length_ == 0) feedSilence(silenceBefore);
      feed(toFloats(samples));
      length_ += samples.size();
      decode();
      const std::string text = result();
      if (library_.isEndpoint(recognizer_, stream_.get()) == 0) return listener_.heard(text);
      library_.reset(recognizer_, stream_.get());
      listener_.closed(text, length_);
    });
  }

  std::string finish() override {
    if (length_ == 0) return {};
    return guarded([&] {
      feedSilence(silenceBehind);
      library_.endOnline(stream_.get());
      decode();
      listener_.closed(result(), length_);
    });
  }

 private:
  void feedSilence(double seconds) {
    feed(std::vector<float>(static_cast<std::size_t>(seconds * sampleRate_)));
  }

  void feed(const std::vector<float>& samples) {
    library_.acceptOnline(stream_.get(), static_cast<std::int32_t>(sampleRate_), samples.data(),
                          static_cast<std::int32_t>(samples.size()));
  }

  void decode() {
    while (library_.isReady(recognizer_, stream_.get()) != 0)
      library_.decodeOnline(recognizer_, stream_.get());
  }

  std::string result() {
    const Owned<Result> result{library_.onlineResult(recognizer_, stream_.get()),
                               library_.destroyOnlineResult};
    return result && result->text != nullptr ? unicode::lowerCased(result->text) : std::string{};
  }

  const Functions& library_;
  const Recognizer* recognizer_;
  Owned<Stream> stream_;
  const std::uint32_t sampleRate_;
  Listener& listener_;
  std::uint64_t length_ = 0;
};

/// Takes what nobody needs to hear.
class SilentListener final : public Listener {
 public:
  void heard(std::string_view /*text*/) override {}
  void closed(std::string_view /*text*/, std::uint64_t /*until*/) override {}
};

}  // namespace

EngineLoading OnlineEngine::load(std::unique_ptr<const Library> library, const ModelFolder& model,
                                 const std::string& network) {
  Padded<OnlineConfig> padded{};
  auto& config = padded.config;
  config.sampleRate = 16000;
  config.featureDimension = 80;
  config.transducer = {model.encoder.c_str(), model.decoder.c_str(), model.joiner.c_str()};
  config.tokens = model.tokens.c_str();
  config.threads = 1;
  config.provider = "cpu";
  config.modelType = network.c_str();
  config.endpoints = 1;
  config.silenceWithoutWords = 2.4F;
  config.silenceAfterWords = 1.0F;
  config.longestSegment = 20;

  const Recognizer* recognizer = nullptr;
  auto failure = guarded([&] { recognizer = library->functions().createOnline(&config); });
  if (!failure.empty()) return {nullptr, failure};
  if (recognizer == nullptr) return {nullptr, language::say(language::words::refusesFiles)};
  Owned<Recognizer> owned{recognizer, library->functions().destroyOnline};
  std::unique_ptr<OnlineEngine> engine{new OnlineEngine{std::move(library), std::move(owned)}};

  // Some faults only show when something is decoded.
  SilentListener nobody;
  const auto trial = engine->begin(16000, nobody);
  if (!trial) return {nullptr, language::say(language::words::cannotBegin)};
  failure = trial->accept(std::vector<std::int16_t>(16000), false);
  if (!failure.empty()) return {nullptr, failure};
  return {std::move(engine), {}};
}

std::unique_ptr<Dictation> OnlineEngine::begin(std::uint32_t sampleRate, Listener& listener) {
  const Stream* stream = nullptr;
  const auto failure = guarded([&] { stream = library_->functions().createOnlineStream(recognizer_.get()); });
  if (!failure.empty() || stream == nullptr) return nullptr;
  return std::make_unique<OnlineDictation>(library_->functions(), recognizer_.get(),
                                           Owned<Stream>{stream, library_->functions().destroyOnlineStream},
                                           sampleRate, listener);
}

}  // namespace tavelo::recognition::sherpa
