#pragma once

#include <filesystem>
#include <string>

#include "recognizer/Engine.h"

namespace tavelo::recognition {

/// Loads the model in `folder` and the library that it is for. Without `library`, that is the one on the
/// loader's path. Can take seconds. Decoding thread.
EngineLoading loadEngine(const std::filesystem::path& folder, const std::string& library);

}  // namespace tavelo::recognition
