#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "recognizer/DecodePace.h"
#include "recognizer/SegmentedDictation.h"
#include "recognizer/SherpaLibrary.h"
#include "recognizer/model/ModelFolder.h"

namespace tavelo::recognition::sherpa {

/// Sound as the library wants it: samples from -1 to 1.
std::vector<float> toFloats(std::span<const std::int16_t> samples);

/// sherpa-onnx with a model that only knows whole recordings. Decoding thread.
class OfflineEngine final : public Engine {
 public:
  /// Loads the model and decodes a moment of silence with it, since some faults only show then.
  static EngineLoading load(std::unique_ptr<const Library> library, const ModelFolder& model);

  std::string_view name() const override { return "sherpa-onnx"; }
  std::string version() const override { return library_->version(); }
  std::unique_ptr<Dictation> begin(std::uint32_t sampleRate, Listener& listener) override;

 private:
  OfflineEngine(std::unique_ptr<const Library> library, Owned<Recognizer> recognizer)
      : library_(std::move(library)), recognizer_(std::move(recognizer)) {}

  Decoded decode(std::uint32_t sampleRate, std::span<const float> samples) const;
  Decoded decodeSegment(std::uint32_t sampleRate, std::span<const std::int16_t> samples) const;
  std::string findShortest();

  std::unique_ptr<const Library> library_;
  Owned<Recognizer> recognizer_;
  DecodePace pace_;
  /// Less sound than this the model cannot decode.
  Seconds shortest_{0};
};

}  // namespace tavelo::recognition::sherpa
