#pragma once

#include <memory>
#include <string>
#include <utility>

#include "recognizer/Engine.h"
#include "recognizer/SherpaLibrary.h"
#include "recognizer/model/ModelFolder.h"

namespace tavelo::recognition::sherpa {

/// sherpa-onnx with a model that is made for running sound. Decoding thread.
class OnlineEngine final : public Engine {
 public:
  /// `network` is the kind of the encoder, or empty if the library shall find out.
  static EngineLoading load(std::unique_ptr<const Library> library, const ModelFolder& model,
                            const std::string& network);

  std::string_view name() const override { return "sherpa-onnx"; }
  std::string version() const override { return library_->version(); }
  std::unique_ptr<Dictation> begin(std::uint32_t sampleRate, Listener& listener) override;

 private:
  OnlineEngine(std::unique_ptr<const Library> library, Owned<Recognizer> recognizer)
      : library_(std::move(library)), recognizer_(std::move(recognizer)) {}

  std::unique_ptr<const Library> library_;
  Owned<Recognizer> recognizer_;
};

}  // namespace tavelo::recognition::sherpa
