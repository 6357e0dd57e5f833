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

/// A loaded language model, which its recognisers share. Must not outlive its library. Any thread.
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

/// One recognition by the library. Must not outlive its model. One thread at a time.
class StreamRecognizer final {
 public:
  StreamRecognizer(const VoskLibrary& library, VoskRecognizer* recognizer)
      : library_(library), recognizer_(recognizer) {}
  ~StreamRecognizer();
  StreamRecognizer(const StreamRecognizer&) = delete;
  StreamRecognizer& operator=(const StreamRecognizer&) = delete;

  /// Decodes mono samples. At worst this takes about as long as the sound lasts.
  Waveform acceptWaveform(std::span<const std::int16_t> samples);

  /// The library's answers as JSON: for the utterance that has just ended, for the one that goes on, and for
  /// the end of the sound. Empty when the library gave none.
  std::string result();
  std::string partialResult();
  std::string finalResult();

 private:
  const VoskLibrary& library_;
  VoskRecognizer* recognizer_;
};

/// libvosk, loaded at run time since the program also works without it. Any thread.
class VoskLibrary final {
 public:
  /// The library, or why it cannot be loaded, in the loader's words.
  struct Opening {
    std::unique_ptr<const VoskLibrary> library;
    std::string failure;
  };

  /// Loads the shared library `file`; a bare name is looked up on the loader's path.
  static Opening open(const std::string& file);

  ~VoskLibrary();
  VoskLibrary(const VoskLibrary&) = delete;
  VoskLibrary& operator=(const VoskLibrary&) = delete;

  /// Loads the model in `folder`, which can take seconds. Null when the library refuses it.
  std::unique_ptr<const LoadedModel> loadModel(const std::filesystem::path& folder) const;

  /// A recogniser for mono sound at `sampleRate`. Null when the library cannot make one.
  std::unique_ptr<StreamRecognizer> makeRecognizer(const LoadedModel& model, double sampleRate) const;

 private:
  friend LoadedModel;
  friend StreamRecognizer;

  explicit VoskLibrary(void* handle) : handle_(handle) {}

  /// Looks up the functions. Returns the name of the first one that is missing, or null.
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

}  // namespace tavelo::recognizer
