#pragma once

#include <QObject>
#include <atomic>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "models/ArchiveCheck.h"
#include "models/Download.h"
#include "models/HeldNetwork.h"
#include "models/Installation.h"
#include "models/KnownModels.h"
#include "models/PublishedChecksum.h"

namespace tavelo::models {

/// What to install, and where to take it from.
struct InstallationOrder {
  KnownModel model;
  /// Install anew what is already there.
  bool replace = false;
  /// SHA-256 checksums that the archives must have; empty for none.
  std::string modelSha256 = {};
  std::string librarySha256 = {};
  /// A folder with the archives, so that nothing is fetched; empty for the network.
  std::filesystem::path from = {};
  /// Folders of a mirror, http or https; empty for the publishers'.
  std::string modelsUrl = {};
  std::string libraryUrl = {};
};

/// The model, or the library that it needs.
struct InstallationPart {
  bool isLibrary = false;
  /// The publisher's name of this version.
  std::string name;
  std::string archive;
  std::string url;
  std::filesystem::path place;
  /// What the archive must match. A published checksum joins them once it is known.
  std::vector<Checksum> checksums;
};

enum class InstallationStep {
  alreadyThere,
  /// There is a model that somebody else put there; it stays.
  usersOwn,
  fetching,
  /// An earlier run began the download.
  resuming,
  /// The part of an earlier run belonged to another file.
  fetchingAgain,
  unpacking,
  installed
};

/// Fetches, checks and installs a model and its library, one installation on this machine at a time. The
/// library comes first, so that a failure never leaves a model behind that nothing can read.
///
/// Main thread, with an application object; checking and unpacking go on in a thread of its own. All
/// callbacks come from the event loop.
class ModelInstaller final {
 public:
  ModelInstaller(Folders folders, InstallationOrder order);
  /// Ends an installation that still runs. To keep the event loop from waiting, call `cancel` and wait for
  /// `onFinished` first.
  ~ModelInstaller();
  ModelInstaller(const ModelInstaller&) = delete;
  ModelInstaller& operator=(const ModelInstaller&) = delete;

  /// What an order is made of: the library and the model.
  static std::deque<InstallationPart> parts(const Folders& folders, const InstallationOrder& order);

  struct Failure {
    enum class Kind {
      /// Full disk, no rights, another download.
      machine,
      /// Not to be reached, or what it gave is not what it should be: the archives may be had in another way.
      publisher,
      cancelled
    };
    Kind kind = Kind::machine;
    /// One sentence without a full stop.
    std::string text;
  };

  /// `sha256` is that of the archive, and empty until it is installed.
  std::function<void(InstallationStep, const InstallationPart&, const std::string& sha256)> onStep;
  /// Bytes that are here of the archive, and how many there will be; absent if the server does not say.
  std::function<void(std::int64_t received, std::optional<std::int64_t> total)> onProgress;
  /// The end; absent on success. The callback may destroy this object.
  std::function<void(const std::optional<Failure>&)> onFinished;

  /// Once.
  void start();
  /// Stops a download and keeps what is here. What is checked or unpacked goes on.
  void pause();
  void resume();
  /// Ends the installation as soon as possible, with `Kind::cancelled`. A part of a download stays for the
  /// next time.
  void cancel();

 private:
  /// What the thread found out about an archive.
  struct Outcome {
    ArchiveCheckResult check;
    std::optional<UnpackFailure> failure;
  };

  void inBackground(std::function<std::function<void()>()> job);
  std::function<void()> lookAround();
  void addParts(bool needsLibrary, ModelState state);
  void next();
  void fetch();
  void download();
  void downloaded(const std::optional<Download::Failure>& failure);
  void install();
  Outcome checkAndInstall(const InstallationPart& part) const;
  void processed(const Outcome& outcome);
  void removeDownload() const;
  void refuse(const std::string& flaw);
  std::filesystem::path archivePath() const;
  void tell(InstallationStep step, const std::string& sha256 = {});
  void finish(std::optional<Failure> failure);

  const Folders folders_;
  const InstallationOrder order_;
  InstallationLock lock_;
  HeldNetwork network_{new QNetworkAccessManager};
  /// What is still to be installed; the first one is being worked on.
  std::deque<InstallationPart> parts_;
  std::optional<PublishedChecksum> question_;
  std::optional<Download> download_;
  bool isPaused_ = false;
  bool isFinished_ = false;
  std::atomic<bool> cancelled_ = false;
  std::thread thread_;
  /// Receives what the thread posts, so that nothing arrives after this object is gone.
  QObject context_;
};

}  // namespace tavelo::models
