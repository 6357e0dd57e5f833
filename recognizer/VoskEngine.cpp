#include "recognizer/VoskEngine.h"

#include <utility>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/Guarded.h"
#include "recognizer/vosk/VoskReply.h"

namespace tavelo::recognition {
namespace {

/// Keeps the library's messages off the log. We report its failures ourselves.
constexpr int silent = -1;

constexpr const char* badAnswer = "libvosk gave an answer that cannot be read";

/// One dictation, decoded as its sound comes. The library finds the ends of the segments.
class VoskDictation final : public Dictation {
 public:
  VoskDictation(const VoskEngine::Functions& library, VoskRecognizer* recognizer, Listener& listener)
      : library_(library), recognizer_(recognizer, library.recognizerFree), listener_(listener) {}

  std::string accept(std::span<const std::int16_t> samples, bool /*moreWaits*/) override {
    std::string problem;
    const auto failure = guarded([&] {
      length_ += samples.size();
      const int answer =
          library_.acceptWaveform(recognizer_.get(), reinterpret_cast<const char*>(samples.data()),
                                  static_cast<int>(samples.size_bytes()));
      if (answer < 0)
        problem = "libvosk cannot decode the sound";
      else
        problem = answer > 0 ? close(library_.result) : tell();
    });
    return failure.empty() ? problem : failure;
  }

  std::string finish() override {
    if (length_ == 0) return {};
    std::string problem;
    const auto failure = guarded([&] { problem = close(library_.finalResult); });
    return failure.empty() ? problem : failure;
  }

 private:
  using Ask = const char* (*)(VoskRecognizer*);

  std::optional<VoskReply> ask(Ask question) {
    const char* answer = question(recognizer_.get());
    return answer != nullptr ? VoskReply::parse(answer) : std::nullopt;
  }

  std::string tell() {
    const auto reply = ask(library_.partialResult);
    if (!reply) return badAnswer;
    // Between utterances the library answers with an empty "text" and no "partial".
    listener_.heard(reply->partial.value_or(std::string{}));
    return {};
  }

  std::string close(Ask question) {
    const auto reply = ask(question);
    if (!reply || !reply->text) return badAnswer;
    listener_.closed(*reply->text, length_);
    return {};
  }

  const VoskEngine::Functions& library_;
  std::unique_ptr<VoskRecognizer, void (*)(VoskRecognizer*)> recognizer_;
  Listener& listener_;
  std::uint64_t length_ = 0;
};

}  // namespace

EngineLoading VoskEngine::load(const std::string& library, const ModelFolder& model) {
  auto opening = SharedLibrary::open(library);
  if (!opening.library) return {nullptr, opening.failure};
  std::unique_ptr<VoskEngine> engine{new VoskEngine};
  engine->library_ = std::move(opening.library);
  if (const char* missing = engine->resolve())
    return {nullptr, language::say(language::words::libraryLacks, {library, missing})};
  const auto failure = guarded([&] {
    engine->functions_.setLogLevel(silent);
    engine->model_ = engine->functions_.modelNew(model.folder.c_str());
  });
  if (engine->model_ != nullptr) return {std::move(engine), {}};
  return {nullptr, language::say(language::words::voskRefuses, {model.folder.string()}) +
                       (failure.empty() ? "" : ": ") + failure};
}

VoskEngine::~VoskEngine() {
  if (model_ != nullptr) functions_.modelFree(model_);
}

/// Looks up the functions. Returns the name of the first one that is missing, or null.
const char* VoskEngine::resolve() {
  const char* missing = nullptr;
  const auto find = [&](const char* symbol, auto& function) {
    if (!library_->find(symbol, function) && missing == nullptr) missing = symbol;
  };
  find("vosk_set_log_level", functions_.setLogLevel);
  find("vosk_model_new", functions_.modelNew);
  find("vosk_model_free", functions_.modelFree);
  find("vosk_recognizer_new", functions_.recognizerNew);
  find("vosk_recognizer_free", functions_.recognizerFree);
  find("vosk_recognizer_accept_waveform", functions_.acceptWaveform);
  find("vosk_recognizer_result", functions_.result);
  find("vosk_recognizer_partial_result", functions_.partialResult);
  find("vosk_recognizer_final_result", functions_.finalResult);
  return missing;
}

std::unique_ptr<Dictation> VoskEngine::begin(std::uint32_t sampleRate, Listener& listener) {
  VoskRecognizer* recognizer = nullptr;
  guarded([&] { recognizer = functions_.recognizerNew(model_, static_cast<float>(sampleRate)); });
  return recognizer != nullptr ? std::make_unique<VoskDictation>(functions_, recognizer, listener) : nullptr;
}

}  // namespace tavelo::recognition
