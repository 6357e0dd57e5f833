#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "models/ModelInstaller.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "ui/qt/setup/SetupDesktop.h"
#include "ui/qt/setup/SetupLines.h"

namespace tavelo {

/// The recogniser's line of the set-up window: fetches a model, or tries a server, and has it used from then
/// on. A download goes on while the window is closed. Main thread, with an application object.
class RecognizerSetup final {
 public:
  /// How often it looks whether a model is loaded.
  static constexpr platform::Seconds loadInterval{0.5};

  /// `desktop` must outlive this object.
  explicit RecognizerSetup(const SetupDesktop& desktop);
  RecognizerSetup(const RecognizerSetup&) = delete;
  RecognizerSetup& operator=(const RecognizerSetup&) = delete;

  /// Called when anything below has changed.
  std::function<void()> onChange;
  /// Called when a download has ended by itself: whether it worked.
  std::function<void(bool worked)> onFetched;

  LineState line() const { return recognizerLine(facts_); }
  FetchState fetchState() const { return facts_.fetch; }
  bool isTrying() const { return facts_.isTrying; }
  bool isUsable() const { return line().mark == Mark::done; }

  struct Progress {
    bool isLibrary = false;
    std::int64_t received = 0;
    /// Absent if the server does not say.
    std::optional<std::int64_t> total;
  };
  /// Of the download that runs; absent without one.
  const std::optional<Progress>& progress() const { return progress_; }

  /// Why the last download or trial failed, with what can be done by hand; empty if it did not.
  const std::string& failure() const { return failure_; }

  /// The name of the installed model, if it is one of ours.
  std::optional<std::string> installedModel() const;

  /// Looks at what is configured, and loads or tries it.
  void examine() { examine(true); }

  /// Fetches a model and installs it, or takes its archives from a folder. Does nothing while one is being
  /// fetched.
  void fetch(const models::KnownModel& model, const std::filesystem::path& from = {});
  void pause();
  void resume();
  void cancel();

  /// Tries the server, and uses it if it answers.
  void useServer(const std::string& address);

 private:
  void examine(bool anew);
  void step(models::InstallationStep step, const models::InstallationPart& part);
  void finished(const std::optional<models::ModelInstaller::Failure>& failure);
  void take(const std::string& problem);
  void tryConfigured(const std::string& address);
  void changed() const;

  const SetupDesktop& desktop_;
  const std::optional<models::Folders> folders_;
  platform::MainQueue& mainQueue_;
  RecognizerFacts facts_;
  std::optional<models::InstallationOrder> order_;
  std::unique_ptr<models::ModelInstaller> installer_;
  std::optional<Progress> progress_;
  std::string failure_;
  /// Counts trials and examinations: only the newest one counts.
  int questions_ = 0;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
