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
#include "models/KnownModels.h"
#include "models/ModelInstaller.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "settings/Names.h"
#include "settings/Settings.h"

namespace tavelo {
namespace {

using models::InstallationOrder;
using models::InstallationPart;
using models::InstallationStep;
using models::KnownModel;
using models::ModelInstaller;

constexpr std::string_view recommended = "vi_VN";
constexpr const char* modelsVariable = settings::names::modelsUrl;
constexpr const char* libraryVariable = settings::names::libraryUrl;

void refuse(const std::string& why) {
  std::fprintf(stderr, "tavelo: %s; see “tavelo get-model --help”\n", onOneLine(why).c_str());
}

std::string describe(const KnownModel& model) {
  return std::string(model.shortName) + "\n    name     " + std::string(model.name) +
         "\n    size     about " + std::to_string(model.megabytes) + " MB to fetch\n    kind     " +
         std::string(nameOf(model.engine)) + ", " + std::string(model.locale) + "\n    licence  " +
         std::string(model.licence) + "\n    why      " + std::string(model.merit) + "\n";
}

std::string describe(const models::KnownLibrary& library) {
  if (library.name.empty()) return {};
  return "    library  " + library.name + ", licence " + std::string(library.licence) + "\n";
}

ExitCode list() {
  const auto all = models::knownModels();
  for (const auto& model : all) print(describe(model));
  print("\nWithout a name, " + std::string(all.front().shortName) + " is fetched.\n");
  return ExitCode::done;
}

/// Writes to the terminal, if there is one, how much is here. One line, which is written over.
class ProgressLine final {
 public:
  void show(std::int64_t received, std::optional<std::int64_t> total) {
    constexpr std::int64_t step = 100'000;
    if (!isTerminal_ || received / step == shown_) return;
    shown_ = received / step;
    constexpr double megabyte = 1e6;
    std::fprintf(stderr, "\r\x1b[K  %.1f", static_cast<double>(received) / megabyte);
    if (total) std::fprintf(stderr, " of %.1f", static_cast<double>(*total) / megabyte);
    std::fputs(" MB", stderr);
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
      return place + " is already there";
    case InstallationStep::usersOwn:
      return place + " is already there. We did not install it, so it stays; --replace replaces it";
    case InstallationStep::fetching:
      return "Fetching " + part.url;
    case InstallationStep::resuming:
      return "Fetching " + part.url + ", resuming where it stopped";
    case InstallationStep::fetchingAgain:
      return "The part of an earlier run does not fit; fetching it again";
    case InstallationStep::unpacking:
      return "Checking and unpacking " + part.archive;
    case InstallationStep::installed:
      break;
  }
  return "Installed " + place + " (" + part.name + ", SHA-256 " + sha256 + ")" +
         (part.checksums.empty()
              ? "\n  There was no checksum to compare it with: it came whole, and its files fit."
              : "");
}

std::string byHand(const models::Folders& folders, const InstallationOrder& order) {
  std::string text = "By hand: on a machine that can reach them, download\n";
  for (const auto& part : ModelInstaller::parts(folders, order)) text += "  " + part.url + "\n";
  return text + "put both into one folder and run get-model again, with --from FOLDER " +
         std::string(order.model.shortName) + "\nIf the publisher has moved, " + modelsVariable + " and " +
         libraryVariable + " name the folders where the files are now.\n";
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
    refuse("no model is known as " + options.model);
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
    refuse(sum + " is not a SHA-256 checksum");
    return std::nullopt;
  }
  for (const char* variable : {modelsVariable, libraryVariable}) {
    const auto address = settings.value(variable);
    if (address.empty() || isWebAddress(address)) continue;
    refuse(std::string(variable) + " must be an address that begins with http:// or https://");
    return std::nullopt;
  }
  std::error_code ignored;
  if (options.from.empty() || std::filesystem::is_directory(options.from, ignored)) return order;
  refuse(options.from + " is not a folder");
  return std::nullopt;
}

}  // namespace

ExitCode runGetModel(const GetModelOptions& options) {
  if (options.list) return list();
  const auto order = readOptions(options);
  if (!order) return ExitCode::wrongUsage;
  const auto folders = models::Folders::ofUser(posix::PosixFileManager().applicationSupportDirectory());
  if (!folders) throw CommandFailure("there is no home folder to install a model in");

  DesktopArguments arguments;
  const QCoreApplication application(arguments.count, arguments.values);
  QNetworkProxyFactory::setUseSystemConfiguration(true);
  print(describe(order->model) + describe(models::libraryFor(order->model.engine)));
  const auto failure = run(*folders, *order);
  if (!failure) {
    print("From its next start on, Tavelo recognises Vietnamese on this machine.\n");
    return ExitCode::done;
  }
  if (failure->kind == ModelInstaller::Failure::Kind::cancelled)
    throw CommandFailure("stopped; the next run resumes the download");
  if (failure->kind == ModelInstaller::Failure::Kind::publisher) tryToPrint(byHand(*folders, *order));
  throw CommandFailure(onOneLine(failure->text));
}

}  // namespace tavelo
