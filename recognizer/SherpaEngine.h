#pragma once

#include <string>

#include "recognizer/Engine.h"
#include "recognizer/model/ModelFolder.h"

namespace tavelo::recognition {

/// Loads sherpa-onnx and a model of its kind. Checks the model's files first, since the library ends the
/// process on some bad ones. A model that is made for it is decoded as a stream, any other one in segments.
EngineLoading loadSherpa(const std::string& library, const ModelFolder& model);

}  // namespace tavelo::recognition
