#include "app/SpeechWiring.h"

#include <system_error>
#include <utility>

#include "language/Language.h"
#include "language/Texts.h"
#include "platform/posix/ExecutableFolder.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/recognizer/ModelConfiguration.h"
#include "platform/recognizer/ProcessSpeech.h"
#include "settings/Names.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

/// The program that recognises: beside this one in a build folder, else where it is installed.
std::filesystem::path recognizerProgram() {
  constexpr const char* name = "tavelo-recognizer";
  std::error_code ignored;
  const auto folder = posix::executableFolder();
  const auto beside = folder / name;
  if (std::filesystem::exists(beside, ignored)) return beside;
  return (folder / TAVELO_LIBEXEC / name).lexically_normal();
}

std::optional<std::filesystem::path> logFile() {
  const auto state = posix::stateDirectory();
  return state ? std::optional{*state / "Tavelo" / "recognizer.log"} : std::nullopt;
}

ConfiguredSpeech::Load loadOf(std::shared_ptr<const recognizer::Outcome> outcome) {
  if (!outcome) return nullptr;
  return [outcome = std::move(outcome)]() -> std::optional<std::string> {
    if (outcome->state() == recognizer::Outcome::State::pending) return std::nullopt;
    return outcome->failure();
  };
}

/// What recognises, and where.
std::string describe(const recognizer::ModelConfiguration& configuration) {
  const auto model = configuration.modelFolder("vi_VN");
  if (!model) return say(words::onThisMachine);
  const auto library = configuration.libraryFor(*model);
  if (library.empty()) return say(words::withModel, {model->string()});
  return say(words::withModelAndLibrary, {model->string(), library});
}

}  // namespace

ConfiguredSpeech makeSpeechByProcess(platform::MainQueue& mainQueue,
                                     const std::optional<std::filesystem::path>& dataHome,
                                     const settings::Settings& settings) {
  const recognizer::ModelConfiguration configuration(
      dataHome, [&settings](const char* name) { return settings.value(name); });
  const recognizer::RecognizerLog log(logFile());
  auto speech =
      std::make_unique<recognizer::ProcessSpeech>(mainQueue, recognizerProgram(), configuration, log);
  auto* process = speech.get();
  return {
      .speech = std::move(speech),
      .description = describe(configuration),
      .preload = [process](const std::string& locale) { process->preload(locale); },
      .load = [process](const std::string& locale) { return loadOf(process->load(locale)); },
      .notifyThrough = [process](auto& notifications) { process->notifyThrough(notifications); },
      .failure = [process](const std::string& locale, auto limit) { return process->failure(locale, limit); },
      .engine = [process](const std::string& locale) { return process->engine(locale); },
      .isLoading = [process](const std::string& locale) { return process->isLoading(locale); },
      .lastFailure = [log] { return log.latest(); }};
}

std::vector<std::string> speechSettings(const settings::Settings& settings) {
  namespace names = settings::names;
  std::vector<std::string> values;
  for (const char* name :
       {names::recognizer, names::model, names::voskModel, names::sherpaLibrary, names::voskLibrary})
    values.push_back(settings.value(name));
  return values;
}

}  // namespace tavelo
