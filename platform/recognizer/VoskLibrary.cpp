#include "platform/recognizer/VoskLibrary.h"

#include <limits>

#include <dlfcn.h>

namespace tavelo::recognizer {
namespace {

/// Keeps the library's messages off standard error. We report its failures ourselves.
constexpr int silent = -1;

std::string text(const char* answer) { return answer != nullptr ? answer : ""; }

}  // namespace

VoskLibrary::Opening VoskLibrary::open(const std::string& file) {
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* reason = dlerror();
    return {nullptr, reason != nullptr ? reason : file + ": cannot be loaded"};
  }
  std::unique_ptr<VoskLibrary> library{new VoskLibrary{handle}};
  if (const char* missing = library->resolve()) return {nullptr, file + ": has no " + missing};
  library->setLogLevel_(silent);
  return {std::move(library), {}};
}

VoskLibrary::~VoskLibrary() { dlclose(handle_); }

const char* VoskLibrary::resolve() {
  const char* missing = nullptr;
  const auto find = [&]<class Function>(const char* symbol, Function*& function) {
    function = reinterpret_cast<Function*>(dlsym(handle_, symbol));
    if (function == nullptr && missing == nullptr) missing = symbol;
  };
  find("vosk_set_log_level", setLogLevel_);
  find("vosk_model_new", modelNew_);
  find("vosk_model_free", modelFree_);
  find("vosk_recognizer_new", recognizerNew_);
  find("vosk_recognizer_free", recognizerFree_);
  find("vosk_recognizer_accept_waveform", acceptWaveform_);
  find("vosk_recognizer_result", result_);
  find("vosk_recognizer_partial_result", partialResult_);
  find("vosk_recognizer_final_result", finalResult_);
  return missing;
}

std::unique_ptr<const LoadedModel> VoskLibrary::loadModel(const std::filesystem::path& folder) const {
  VoskModel* model = modelNew_(folder.c_str());
  return model != nullptr ? std::make_unique<const LoadedModel>(*this, model) : nullptr;
}

std::unique_ptr<StreamRecognizer> VoskLibrary::makeRecognizer(const LoadedModel& model,
                                                              double sampleRate) const {
  VoskRecognizer* recognizer = recognizerNew_(model.get(), static_cast<float>(sampleRate));
  return recognizer != nullptr ? std::make_unique<StreamRecognizer>(*this, recognizer) : nullptr;
}

LoadedModel::~LoadedModel() { library_.modelFree_(model_); }

StreamRecognizer::~StreamRecognizer() { library_.recognizerFree_(recognizer_); }

Waveform StreamRecognizer::acceptWaveform(std::span<const std::int16_t> samples) {
  if (samples.size_bytes() > std::numeric_limits<int>::max()) return Waveform::failed;
  const int answer = library_.acceptWaveform_(recognizer_, reinterpret_cast<const char*>(samples.data()),
                                              static_cast<int>(samples.size_bytes()));
  if (answer < 0) return Waveform::failed;
  return answer > 0 ? Waveform::utteranceEnded : Waveform::utteranceGoesOn;
}

std::string StreamRecognizer::result() { return text(library_.result_(recognizer_)); }
std::string StreamRecognizer::partialResult() { return text(library_.partialResult_(recognizer_)); }
std::string StreamRecognizer::finalResult() { return text(library_.finalResult_(recognizer_)); }

}  // namespace tavelo::recognizer
