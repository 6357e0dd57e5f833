#include "recognizer/LoadEngine.h"

#include <exception>

#include "recognizer/SherpaEngine.h"
#include "recognizer/VoskEngine.h"
#include "recognizer/model/ModelFolder.h"

namespace tavelo::recognition {
namespace {

constexpr const char* sherpaName = "libsherpa-onnx-c-api" TAVELO_LIBRARY_SUFFIX;
constexpr const char* voskName = "libvosk" TAVELO_LIBRARY_SUFFIX;

}  // namespace

EngineLoading loadEngine(const std::filesystem::path& folder, const std::string& library) {
  try {
    const auto model = ModelFolder::read(folder);
    switch (model.kind) {
      case ModelFolder::Kind::sherpaOnnx:
        return loadSherpa(library.empty() ? sherpaName : library, model);
      case ModelFolder::Kind::vosk:
        return VoskEngine::load(library.empty() ? voskName : library, model);
      case ModelFolder::Kind::none:
        break;
    }
    return {nullptr, model.problem};
  } catch (const std::exception& error) {
    return {nullptr, folder.string() + ": " + error.what()};
  }
}

}  // namespace tavelo::recognition
