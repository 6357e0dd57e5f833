#include "models/KnownModels.h"

#include <QString>
#include <QSysInfo>
#include <algorithm>
#include <array>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::models {
namespace {

namespace words = language::words;

// What could not be looked up when this was written is said so, not guessed; docs/dependencies.md has more.
constexpr auto askThePublisher = words::licenceUnknown;
/// A name, the same in every language.
constexpr language::Text apache{"Apache-2.0", "Apache-2.0"};

constexpr std::array models{
    KnownModel{"zipformer-30M", "sherpa-onnx-zipformer-vi-30M-int8-2026-02-09",
               "sherpa-onnx-zipformer-vi-30M-int8-2026-02-09.tar.bz2", Engine::sherpaOnnx, "vi_VN", 33,
               askThePublisher, words::meritSmallest},
    KnownModel{"zipformer", "sherpa-onnx-zipformer-vi-int8-2025-04-20",
               "sherpa-onnx-zipformer-vi-int8-2025-04-20.tar.bz2", Engine::sherpaOnnx, "vi_VN", 70,
               askThePublisher, words::meritLarger},
    KnownModel{"vosk-small", "vosk-model-small-vn-0.4", "vosk-model-small-vn-0.4.zip", Engine::vosk, "vi_VN",
               32, apache, words::meritOld},
    KnownModel{"vosk-big", "vosk-model-vn-0.4", "vosk-model-vn-0.4.zip", Engine::vosk, "vi_VN", 78, apache,
               words::meritOldBig},
};

constexpr std::array<std::string_view, 9> voskFunctions{
    "vosk_set_log_level",
    "vosk_model_new",
    "vosk_model_free",
    "vosk_recognizer_new",
    "vosk_recognizer_free",
    "vosk_recognizer_accept_waveform",
    "vosk_recognizer_result",
    "vosk_recognizer_partial_result",
    "vosk_recognizer_final_result",
};
constexpr std::array<std::string_view, 7> sherpaFunctions{
    "SherpaOnnxGetVersionStr",          "SherpaOnnxCreateOfflineRecognizer",
    "SherpaOnnxCreateOfflineStream",    "SherpaOnnxAcceptWaveformOffline",
    "SherpaOnnxDecodeOfflineStream",    "SherpaOnnxGetOfflineStreamResult",
    "SherpaOnnxCreateOnlineRecognizer",
};
constexpr std::array<std::string_view, 1> runtimeFunctions{"OrtGetApiBase"};

constexpr std::array voskFiles{LibraryFile{"libvosk.so", voskFunctions}};
constexpr std::array sherpaFiles{LibraryFile{"libsherpa-onnx-c-api.so", sherpaFunctions},
                                 LibraryFile{"libonnxruntime.so", runtimeFunctions}};

KnownLibrary voskLibrary(std::string_view machine) {
  if (machine != "x86_64" && machine != "aarch64") return {};
  const std::string name = "vosk-linux-" + std::string(machine) + "-0.3.45";
  return {.name = name,
          .archive = name + ".zip",
          .url = "https://github.com/alphacep/vosk-api/releases/download/v0.3.45",
          .licence = "Apache-2.0",
          .sha512 = {}};
}

/// The project's own builds in the npm registry, since we know their checksums. The library needs the
/// onnxruntime of its own package; both come from this one.
KnownLibrary sherpaLibrary(std::string_view machine) {
  const bool isIntel = machine == "x86_64";
  if (!isIntel && machine != "aarch64") return {};
  const std::string package = isIntel ? "sherpa-onnx-linux-x64" : "sherpa-onnx-linux-arm64";
  return {.name = package + "-1.13.8",
          .archive = package + "-1.13.8.tgz",
          .url = "https://registry.npmjs.org/" + package + "/-",
          .licence = language::say(words::licenceApacheAndMit),
          .sha512 = isIntel ? "ea99678636a0b127939ed0a09e56a0f3a8566ecfee644f42ae6b352e039bebcf"
                              "f59cab0842331df961b9d7d9be68fc13e93aec04e884333af1e35b7cb0be4be6"
                            : "4e583b6bbd1bfd681edce17c2204c717d8e14950ac2f22902a1c1ce01b09e40f"
                              "9d2ff4ab16d1818f3b87a785de2e18a2393eda7c2c57e4f7529ff0f873c2e7bb"};
}

}  // namespace

std::string_view nameOf(Engine engine) { return engine == Engine::vosk ? "vosk" : "sherpa-onnx"; }

std::span<const KnownModel> knownModels() { return models; }

const KnownModel* findModel(std::string_view name) {
  const auto found = std::find_if(models.begin(), models.end(), [name](const KnownModel& model) {
    return model.shortName == name || model.name == name;
  });
  return found == models.end() ? nullptr : &*found;
}

std::string_view modelsUrl(Engine engine) {
  return engine == Engine::vosk ? "https://alphacephei.com/vosk/models"
                                : "https://github.com/k2-fsa/sherpa-onnx/releases/download/asr-models";
}

std::string_view checksumList(Engine engine) {
  return engine == Engine::vosk ? "model-list.json" : "checksum.txt";
}

std::string thisMachine() {
  const auto name = QSysInfo::buildCpuArchitecture().toStdString();
  return name == "arm64" ? "aarch64" : name;
}

KnownLibrary libraryFor(Engine engine) {
  const auto machine = thisMachine();
  return engine == Engine::vosk ? voskLibrary(machine) : sherpaLibrary(machine);
}

std::span<const LibraryFile> libraryFiles(Engine engine) {
  if (engine == Engine::vosk) return voskFiles;
  return sherpaFiles;
}

}  // namespace tavelo::models
