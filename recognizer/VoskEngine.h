#pragma once

#include <memory>
#include <string>

#include "recognizer/Engine.h"
#include "recognizer/SharedLibrary.h"
#include "recognizer/model/ModelFolder.h"

struct VoskModel;
struct VoskRecognizer;

namespace tavelo::recognition {

/// libvosk with a loaded model. Decoding thread.
class VoskEngine final : public Engine {
 public:
  /// Loads the library and the model, which can take seconds.
  static EngineLoading load(const std::string& library, const ModelFolder& model);

  ~VoskEngine() override;

  std::string_view name() const override { return "vosk"; }
  /// The library does not say.
  std::string version() const override { return {}; }
  std::unique_ptr<Dictation> begin(std::uint32_t sampleRate, Listener& listener) override;

  /// The library's functions.
  struct Functions {
    void (*setLogLevel)(int) = nullptr;
    VoskModel* (*modelNew)(const char* folder) = nullptr;
    void (*modelFree)(VoskModel*) = nullptr;
    VoskRecognizer* (*recognizerNew)(VoskModel*, float sampleRate) = nullptr;
    void (*recognizerFree)(VoskRecognizer*) = nullptr;
    int (*acceptWaveform)(VoskRecognizer*, const char* samples, int bytes) = nullptr;
    const char* (*result)(VoskRecognizer*) = nullptr;
    const char* (*partialResult)(VoskRecognizer*) = nullptr;
    const char* (*finalResult)(VoskRecognizer*) = nullptr;
  };

 private:
  VoskEngine() = default;
  const char* resolve();

  std::unique_ptr<const SharedLibrary> library_;
  Functions functions_;
  VoskModel* model_ = nullptr;
};

}  // namespace tavelo::recognition
