#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <QUrl>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include <unistd.h>

#include "app/DesktopArguments.h"
#include "app/TerminationSignals.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "models/KnownModels.h"
#include "models/ModelInstaller.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "settings/Names.h"
#include "settings/Settings.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

using models::InstallationOrder;
using models::InstallationPart;
using models::InstallationStep;
using models::KnownModel;
using models::ModelInstaller;

constexpr std::string_view recommended = "vi_VN";
constexpr const char* modelsVariable = settings::names::modelsUrl;
constexpr const char* libraryVariable = settings::names::libraryUrl;

void refuse(const std::string& why) {
  std::fputs(say(words::seeGetModelHelp, {onOneLine(why)}).c_str(), stderr);
}

std::string describe(const KnownModel& model) {
  return say(words::modelInList, {std::string(model.shortName), std::string(model.name),
                                  std::to_string(model.megabytes), std::string(nameOf(model.engine)),
                                  std::string(model.locale), say(model.licence), say(model.merit)});
}

std::string describe(const models::KnownLibrary& library) {
  if (library.name.empty()) return {};
  return say(words::libraryInList, {library.name, library.licence});
}

ExitCode list() {
  const auto all = models::knownModels();
  for (const auto& model : all) print(describe(model));
  print(say(words::defaultModel, {std::string(all.front().shortName)}));
  return ExitCode::done;
}

std::string inMegabytes(std::int64_t bytes) {
  constexpr std::int64_t tenth = 100'000;
  const auto tenths = (bytes + tenth / 2) / tenth;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

/// Writes to the terminal, if there is one, how much is here. One line, which is written over.
class ProgressLine final {
 public:
  void show(std::int64_t received, std::optional<std::int64_t> total) {
    constexpr std::int64_t step = 100'000;
    if (!isTerminal_ || received / step == shown_) return;
    shown_ = received / step;
    const auto here = inMegabytes(received);
    const auto line =
        total ? say(words::megabytesOf, {here, inMegabytes(*total)}) : say(words::megabytes, {here});
    std::fprintf(stderr, "\r\x1b[K  %s", line.c_str());
  }
  void clear() {
    if (std::exchange(shown_, -1) >= 0) std::fputs("\r\x1b[K", stderr);
  }

 private:
  const bool isTerminal_ = ::isatty(STDERR_FILENO) == 1;
  /// In steps; -1 if nothing is shown.
  std::int64_t shown_ = -1;
};

std::string describe(InstallationStep step, const InstallationPart& part, const std::string& sha256) {
  const std::string place = part.place.string();
  switch (step) {
    case InstallationStep::alreadyThere:
      return say(words::alreadyThere, {place});
    case InstallationStep::usersOwn:
      return say(words::usersOwnStays, {place});
    case InstallationStep::fetching:
      return say(words::fetching, {part.url});
    case InstallationStep::resuming:
      return say(words::resuming, {part.url});
    case InstallationStep::fetchingAgain:
      return say(words::fetchingAgain);
    case InstallationStep::unpacking:
      return say(words::unpacking, {part.archive});
    case InstallationStep::installed:
      break;
  }
  return say(words::installed, {place, part.name, sha256}) +
         (part.checksums.empty() ? say(words::notCompared) : "");
}

std::string byHand(const models::Folders& folders, const InstallationOrder& order) {
  std::string text = say(words::byHand);
  for (const auto& part : ModelInstaller::parts(folders, order)) text += "  " + part.url + "\n";
  return text + say(words::byHandThen, {std::string(order.model.shortName), modelsVariable, libraryVariable});
}

/// Runs the installation to its end. Absent on success.
std::optional<ModelInstaller::Failure> run(const models::Folders& folders, const InstallationOrder& order) {
  posix::SystemClock clock;
  qt::QtMainQueue mainQueue(clock);
  ProgressLine progress;
  ModelInstaller installer(folders, order);
  std::optional<ModelInstaller::Failure> outcome;
  installer.onProgress = [&progress](auto received, auto total) { progress.show(received, total); };
  installer.onStep = [&progress](auto step, const auto& part, const auto& sha256) {
    progress.clear();
    // If nobody reads it, the model is installed nevertheless.
    tryToPrint(describe(step, part, sha256) + "\n");
  };
  installer.onFinished = [&](const auto& failure) {
    progress.clear();
    outcome = failure;
    QCoreApplication::quit();
  };
  const TerminationSignals termination(mainQueue, [&installer] { installer.cancel(); });
  installer.start();
  QCoreApplication::exec();
  return outcome;
}

bool isWebAddress(const std::string& text) {
  const QUrl url(QString::fromStdString(text));
  return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http" || url.scheme() == "https");
}

/// Absent, after a line on standard error, if the options make no sense.
std::optional<InstallationOrder> readOptions(const GetModelOptions& options) {
  const auto* model =
      options.model == recommended ? &models::knownModels().front() : models::findModel(options.model);
  if (model == nullptr) {
    refuse(say(words::unknownModel, {options.model}));
    return std::nullopt;
  }
  const auto settings = settings::Settings::ofUser();
  InstallationOrder order{.model = *model,
                          .replace = options.replace,
                          .modelSha256 = models::lowerCase(options.sha256),
                          .librarySha256 = models::lowerCase(options.librarySha256),
                          .from = options.from,
                          .modelsUrl = settings.value(modelsVariable),
                          .libraryUrl = settings.value(libraryVariable)};
  for (const auto& sum : {order.modelSha256, order.librarySha256}) {
    if (sum.empty() || models::isSha256(sum)) continue;
    refuse(say(words::notASum, {sum}));
    return std::nullopt;
  }
  for (const char* variable : {modelsVariable, libraryVariable}) {
    const auto address = settings.value(variable);
    if (address.empty() || isWebAddress(address)) continue;
    refuse(say(words::notAWebAddress, {variable}));
    return std::nullopt;
  }
  std::error_code ignored;
  if (options.from.empty() || std::filesystem::is_directory(options.from, ignored)) return order;
  refuse(say(words::isNotAFolder, {options.from}));
  return std::nullopt;
}

}  // namespace

ExitCode runGetModel(const GetModelOptions& options) {
  if (options.list) return list();
  const auto order = readOptions(options);
  if (!order) return ExitCode::wrongUsage;
  const auto folders = models::Folders::ofUser(posix::PosixFileManager().applicationSupportDirectory());
  if (!folders) throw CommandFailure(say(words::noHome));

  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  QNetworkProxyFactory::setUseSystemConfiguration(true);
  print(describe(order->model) + describe(models::libraryFor(order->model.engine)));
  const auto failure = run(*folders, *order);
  if (!failure) {
    print(say(words::recognisesFromNow));
    return ExitCode::done;
  }
  if (failure->kind == ModelInstaller::Failure::Kind::cancelled) throw CommandFailure(say(words::stopped));
  if (failure->kind == ModelInstaller::Failure::Kind::publisher) tryToPrint(byHand(*folders, *order));
  throw CommandFailure(onOneLine(failure->text));
}

}  // namespace tavelo
