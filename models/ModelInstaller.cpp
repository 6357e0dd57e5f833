#include "models/ModelInstaller.h"

#include <QTimer>
#include <QUrl>
#include <utility>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::models {
namespace {

using language::say;
namespace words = language::words;

using Kind = ModelInstaller::Failure::Kind;

std::string orElse(std::string mirror, std::string_view publisher) {
  while (mirror.ends_with('/')) mirror.pop_back();
  return mirror.empty() ? std::string(publisher) : mirror;
}

std::vector<Checksum> given(const std::string& sha256) {
  if (sha256.empty()) return {};
  return {{Checksum::Source::given, sha256}};
}

InstallationPart modelPart(const Folders& folders, const InstallationOrder& order) {
  const auto& model = order.model;
  return {.isLibrary = false,
          .name = std::string(model.name),
          .archive = std::string(model.archive),
          .url = orElse(order.modelsUrl, modelsUrl(model.engine)) + "/" + std::string(model.archive),
          .place = folders.model(model.locale),
          .checksums = given(order.modelSha256)};
}

InstallationPart libraryPart(const Folders& folders, const InstallationOrder& order) {
  const auto library = libraryFor(order.model.engine);
  auto checksums = given(order.librarySha256);
  if (checksums.empty() && !library.sha512.empty())
    checksums.push_back({Checksum::Source::pinned, std::string(library.sha512)});
  return {.isLibrary = true,
          .name = library.name,
          .archive = library.archive,
          .url = orElse(order.libraryUrl, library.url) + "/" + library.archive,
          .place = folders.libraries() / libraryFiles(order.model.engine)[0].name,
          .checksums = std::move(checksums)};
}

/// Whether it is a file with something in it, and no link.
bool holdsSomething(const std::filesystem::path& file) {
  std::error_code error;
  return std::filesystem::symlink_status(file, error).type() == std::filesystem::file_type::regular &&
         std::filesystem::file_size(file, error) > 0 && !error;
}

/// What the model's archive was compared with.
std::string comparedWith(const InstallationPart& part) {
  if (part.checksums.empty()) return "unchecked";
  return part.checksums.front().source == Checksum::Source::given ? "given" : "published";
}

}  // namespace

std::deque<InstallationPart> ModelInstaller::parts(const Folders& folders, const InstallationOrder& order) {
  return {libraryPart(folders, order), modelPart(folders, order)};
}

ModelInstaller::ModelInstaller(Folders folders, InstallationOrder order)
    : folders_(std::move(folders)), order_(std::move(order)) {}

ModelInstaller::~ModelInstaller() {
  cancelled_ = true;
  if (thread_.joinable()) thread_.join();
}

/// Runs `job` in the thread, then what it returned on the main thread. One job at a time.
void ModelInstaller::inBackground(std::function<std::function<void()>()> job) {
  thread_ = std::thread([this, job = std::move(job)] {
    auto then = job();
    QMetaObject::invokeMethod(
        &context_,
        [this, then = std::move(then)] {
          thread_.join();
          then();
        },
        Qt::QueuedConnection);
  });
}

void ModelInstaller::start() {
  if (auto problem = lock_.take(folders_); !problem.empty()) return finish(Failure{Kind::machine, problem});
  inBackground([this] { return lookAround(); });
}

std::function<void()> ModelInstaller::lookAround() {
  recover(folders_, order_.model.locale);
  const bool needsLibrary = order_.replace || !isLibrary(folders_.libraries(), order_.model.engine);
  const auto state = stateOf(folders_, order_.model, order_.modelSha256);
  return [this, needsLibrary, state] { addParts(needsLibrary, state); };
}

void ModelInstaller::addParts(bool needsLibrary, ModelState state) {
  parts_ = parts(folders_, order_);
  if (needsLibrary && parts_.front().name.empty())
    return finish(Failure{Kind::machine, say(words::noLibraryForMachine, {thisMachine()})});
  if (!needsLibrary) {
    tell(InstallationStep::alreadyThere);
    parts_.pop_front();
  }
  const auto& model = parts_.back();
  if (state == ModelState::unreadable) {
    const auto note = model.place / originFileName;
    return finish(Failure{Kind::machine, say(words::noteIsNoFile, {note.string()})});
  }
  if (!order_.replace && state != ModelState::missing) {
    const bool isOurs = state == ModelState::installed;
    if (onStep) onStep(isOurs ? InstallationStep::alreadyThere : InstallationStep::usersOwn, model, {});
    parts_.pop_back();
  }
  next();
}

void ModelInstaller::next() {
  if (cancelled_) return finish(Failure{Kind::cancelled, {}});
  if (parts_.empty()) return finish(std::nullopt);
  if (order_.from.empty()) return fetch();
  std::error_code error;
  if (!std::filesystem::exists(archivePath(), error))
    return finish(Failure{Kind::machine, say(words::noSuchArchive, {archivePath().string()})});
  install();
}

/// The part of a download, or the archive that the user brought.
std::filesystem::path ModelInstaller::archivePath() const {
  const auto& name = parts_.front().archive;
  return order_.from.empty() ? folders_.cache / (name + ".part") : order_.from / name;
}

void ModelInstaller::removeDownload() const {
  std::error_code ignored;
  if (order_.from.empty()) std::filesystem::remove(archivePath(), ignored);
}

/// Looks for a checksum first, unless we have one already.
void ModelInstaller::fetch() {
  const auto& part = parts_.front();
  if (part.isLibrary || !part.checksums.empty()) return download();
  const auto folder = part.url.substr(0, part.url.rfind('/') + 1);
  const QUrl list(QString::fromStdString(folder + std::string(checksumList(order_.model.engine))));
  question_.emplace(*network_, list, part.archive, [this](const std::string& checksum) {
    if (!checksum.empty()) parts_.front().checksums.push_back({Checksum::Source::published, checksum});
    download();
  });
}

void ModelInstaller::download() {
  tell(holdsSomething(archivePath()) ? InstallationStep::resuming : InstallationStep::fetching);
  download_.emplace(*network_, QUrl(QString::fromStdString(parts_.front().url)), archivePath());
  download_->onProgress = [this](auto received, auto total) {
    if (onProgress) onProgress(received, total);
  };
  download_->onFinished = [this](const auto& failure) { downloaded(failure); };
  download_->start();
  if (isPaused_) download_->pause();
}

void ModelInstaller::downloaded(const std::optional<Download::Failure>& failure) {
  if (!failure) return install();
  const bool isLocal = failure->isLocal;
  const auto text =
      isLocal ? failure->reason : say(words::cannotFetch, {parts_.front().url, failure->reason});
  finish(Failure{isLocal ? Kind::machine : Kind::publisher, text});
}

void ModelInstaller::install() {
  tell(InstallationStep::unpacking);
  inBackground([this, part = parts_.front()]() -> std::function<void()> {
    return [this, outcome = checkAndInstall(part)] { processed(outcome); };
  });
}

ModelInstaller::Outcome ModelInstaller::checkAndInstall(const InstallationPart& part) const {
  const auto archive = archivePath();
  Outcome outcome{checkArchive(archive, part.checksums, cancelled_), std::nullopt};
  if (cancelled_) {
    outcome.failure = UnpackFailure{UnpackFailure::Kind::cancelled, {}};
  } else if (!outcome.check.flaw.empty()) {
    outcome.failure = UnpackFailure{UnpackFailure::Kind::archive, outcome.check.flaw};
  } else if (part.isLibrary) {
    outcome.failure = installLibrary(folders_, order_.model.engine, archive, cancelled_);
  } else {
    const Origin origin{part.name, outcome.check.sha256, comparedWith(part), true};
    outcome.failure = installModel(folders_, order_.model, archive, origin, cancelled_);
  }
  return outcome;
}

void ModelInstaller::processed(const Outcome& outcome) {
  if (!outcome.failure) {
    removeDownload();
    tell(InstallationStep::installed, outcome.check.sha256);
    parts_.pop_front();
    return next();
  }
  switch (outcome.failure->kind) {
    case UnpackFailure::Kind::cancelled:
      return finish(Failure{Kind::cancelled, {}});
    case UnpackFailure::Kind::disk:
      return finish(Failure{Kind::machine, outcome.failure->text});
    case UnpackFailure::Kind::archive:
      break;
  }
  refuse(outcome.failure->text);
}

/// The archive is not what it should be. One that was fetched goes; one that the user brought stays.
void ModelInstaller::refuse(const std::string& flaw) {
  if (!order_.from.empty()) return finish(Failure{Kind::machine, archivePath().string() + " " + flaw});
  removeDownload();
  if (download_->isResumed()) {
    tell(InstallationStep::fetchingAgain);
    return download();
  }
  finish(Failure{Kind::publisher, say(words::gave, {parts_.front().url, flaw})});
}

void ModelInstaller::pause() {
  isPaused_ = true;
  if (download_) download_->pause();
}

void ModelInstaller::resume() {
  isPaused_ = false;
  if (download_) download_->resume();
}

void ModelInstaller::cancel() {
  cancelled_ = true;
  // A job in the thread ends by itself and tells us.
  if (!thread_.joinable()) finish(Failure{Kind::cancelled, {}});
}

void ModelInstaller::tell(InstallationStep step, const std::string& sha256) {
  if (onStep) onStep(step, parts_.front(), sha256);
}

void ModelInstaller::finish(std::optional<Failure> failure) {
  if (std::exchange(isFinished_, true)) return;
  question_.reset();
  download_.reset();
  // In a turn of its own, since the callback may destroy this object.
  QTimer::singleShot(0, &context_, [this, failure = std::move(failure)] {
    lock_ = {};
    const auto finished = onFinished;
    if (finished) finished(failure);
  });
}

}  // namespace tavelo::models
