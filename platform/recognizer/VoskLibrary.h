#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

struct VoskModel;
struct VoskRecognizer;

namespace tavelo::recognizer {

class VoskLibrary;

/// A loaded language model. Shared by its recognisers; any thread. It must not outlive its library.
class LoadedModel final {
 public:
  LoadedModel(const VoskLibrary& library, VoskModel* model) : library_(library), model_(model) {}
  ~LoadedModel();
  LoadedModel(const LoadedModel&) = delete;
  LoadedModel& operator=(const LoadedModel&) = delete;

  const VoskLibrary& library() const { return library_; }
  VoskModel* get() const { return model_; }

 private:
  const VoskLibrary& library_;
  VoskModel* model_;
};

/// What the library made of one piece of sound.
enum class Waveform : std::uint8_t { utteranceGoesOn, utteranceEnded, failed };

/// One recognition of the library. One thread at a time. It must not outlive its model.
class StreamRecognizer final {
 public:
  StreamRecognizer(const VoskLibrary& library, VoskRecognizer* recognizer)
      : library_(library), recognizer_(recognizer) {}
  ~StreamRecognizer();
  StreamRecognizer(const StreamRecognizer&) = delete;
  StreamRecognizer& operator=(const StreamRecognizer&) = delete;

  /// Decodes mono samples; takes about as long as they last at worst.
  Waveform acceptWaveform(std::span<const std::int16_t> samples);

  /// The answers, as JSON: of the utterance that has just ended, of the one that goes on, and of the sound's
  /// end. Empty when the library gave none.
  std::string result();
  std::string partialResult();
  std::string finalResult();

 private:
  const VoskLibrary& library_;
  VoskRecognizer* recognizer_;
};

/// libvosk, loaded when it is needed, since the program also runs without it. Any thread.
class VoskLibrary final {
 public:
  struct Opening;

  /// Loads the shared library `file`; a bare name is looked for on the loader's path.
  static Opening open(const std::string& file);

  ~VoskLibrary();
  VoskLibrary(const VoskLibrary&) = delete;
  VoskLibrary& operator=(const VoskLibrary&) = delete;

  /// Loads the model in `folder`, which takes up to seconds; null when the library refuses it.
  std::unique_ptr<const LoadedModel> loadModel(const std::filesystem::path& folder) const;

  /// A recogniser for mono sound of `sampleRate`; null when the library cannot make one.
  std::unique_ptr<StreamRecognizer> makeRecognizer(const LoadedModel& model, double sampleRate) const;

 private:
  friend LoadedModel;
  friend StreamRecognizer;

  explicit VoskLibrary(void* handle) : handle_(handle) {}

  /// Fills in the functions; the name of the first that is missing, else null.
  const char* resolve();

  void* handle_;
  void (*setLogLevel_)(int) = nullptr;
  VoskModel* (*modelNew_)(const char* folder) = nullptr;
  void (*modelFree_)(VoskModel*) = nullptr;
  VoskRecognizer* (*recognizerNew_)(VoskModel*, float sampleRate) = nullptr;
  void (*recognizerFree_)(VoskRecognizer*) = nullptr;
  int (*acceptWaveform_)(VoskRecognizer*, const char* samples, int bytes) = nullptr;
  const char* (*result_)(VoskRecognizer*) = nullptr;
  const char* (*partialResult_)(VoskRecognizer*) = nullptr;
  const char* (*finalResult_)(VoskRecognizer*) = nullptr;
};

/// Either the library or why there is none, in the loader's words.
struct VoskLibrary::Opening {
  std::unique_ptr<const VoskLibrary> library;
  std::string failure;
};

}  // namespace tavelo::recognizer
