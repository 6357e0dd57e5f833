#include "ui/qt/setup/RecognizerSetup.h"

#include <utility>

#include "models/ModelFiles.h"
#include "platform/Platform.h"
#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

constexpr std::string_view locale = "vi_VN";

using models::InstallationStep;
using models::ModelInstaller;

}  // namespace

RecognizerSetup::RecognizerSetup(const SetupDesktop& desktop)
    : desktop_(desktop),
      folders_(models::Folders::ofUser(desktop.dataHome)),
      mainQueue_(platform::current().mainQueue) {}

std::optional<std::string> RecognizerSetup::installedModel() const {
  if (!folders_) return std::nullopt;
  const auto origin = models::originOf(folders_->model(locale));
  return origin ? std::optional(origin->name) : std::nullopt;
}

void RecognizerSetup::examine(bool anew) {
  const auto question = ++questions_;
  facts_.condition = desktop_.recognizer(anew);
  facts_.trialFailure.clear();
  facts_.isTrying = false;
  if (facts_.condition.state == RecognizerCondition::State::server) {
    tryConfigured(facts_.condition.detail);
  } else if (facts_.condition.state == RecognizerCondition::State::loading) {
    mainQueue_.asyncAfter(loadInterval, lifetime_.guard([this, question] {
      if (question == questions_) examine(false);
    }));
  }
  changed();
}

void RecognizerSetup::tryConfigured(const std::string& address) {
  facts_.isTrying = true;
  desktop_.tryServer(address, lifetime_.guard([this, question = questions_](const std::string& failure) {
    if (question != questions_) return;
    facts_.isTrying = false;
    facts_.trialFailure = failure;
    changed();
  }));
}

void RecognizerSetup::useServer(const std::string& address) {
  facts_.isTrying = true;
  failure_.clear();
  desktop_.tryServer(address,
                     lifetime_.guard([this, address, question = ++questions_](const std::string& failure) {
                       if (question != questions_) return;
                       facts_.isTrying = false;
                       if (failure.empty()) return take(desktop_.chooseServer(address));
                       failure_ = filled(setuptexts::serverFails, failure);
                       changed();
                     }));
  changed();
}

/// A choice was written, or could not be.
void RecognizerSetup::take(const std::string& problem) {
  if (!problem.empty()) failure_ = filled(setuptexts::notSaved, problem);
  examine();
}

void RecognizerSetup::fetch(const models::KnownModel& model, const std::filesystem::path& from) {
  if (installer_) return;
  failure_.clear();
  if (!folders_) {
    failure_ = filled(setuptexts::machineFails, setuptexts::noHome);
    facts_.fetch = FetchState::failed;
    return changed();
  }
  order_ = models::InstallationOrder{.model = model,
                                     .replace = installedModel() == model.name,
                                     .modelSha256 = {},
                                     .librarySha256 = {},
                                     .from = from,
                                     .modelsUrl = desktop_.modelsUrl,
                                     .libraryUrl = desktop_.libraryUrl};
  installer_ = std::make_unique<ModelInstaller>(*folders_, *order_);
  installer_->onStep = [this](auto step, const auto& part, const auto&) { this->step(step, part); };
  installer_->onProgress = [this](auto received, auto total) {
    if (progress_) *progress_ = {progress_->isLibrary, received, total};
    changed();
  };
  installer_->onFinished = [this](const auto& failure) { finished(failure); };
  facts_.fetch = FetchState::looking;
  installer_->start();
  changed();
}

void RecognizerSetup::step(InstallationStep step, const models::InstallationPart& part) {
  if (step == InstallationStep::unpacking) {
    facts_.fetch = FetchState::unpacking;
  } else if (step != InstallationStep::installed) {
    progress_ = Progress{part.isLibrary, 0, std::nullopt};
    if (facts_.fetch != FetchState::paused) facts_.fetch = FetchState::fetching;
  }
  changed();
}

void RecognizerSetup::pause() {
  if (!installer_ || facts_.fetch != FetchState::fetching) return;
  installer_->pause();
  facts_.fetch = FetchState::paused;
  changed();
}

void RecognizerSetup::resume() {
  if (!installer_ || facts_.fetch != FetchState::paused) return;
  installer_->resume();
  facts_.fetch = FetchState::fetching;
  changed();
}

void RecognizerSetup::cancel() {
  if (installer_) installer_->cancel();
}

void RecognizerSetup::finished(const std::optional<ModelInstaller::Failure>& failure) {
  using Kind = ModelInstaller::Failure::Kind;
  const auto keep = std::exchange(installer_, nullptr);
  progress_.reset();
  const bool isCancelled = failure && failure->kind == Kind::cancelled;
  facts_.fetch = failure && !isCancelled ? FetchState::failed : FetchState::none;
  if (!failure) {
    take(desktop_.chooseInstalledModel());
  } else if (!isCancelled) {
    failure_ =
        filled(failure->kind == Kind::publisher ? setuptexts::publisherFails : setuptexts::machineFails,
               failure->text);
    if (failure->kind == Kind::publisher) {
      failure_ += std::string("\n") + setuptexts::byHand;
      for (const auto& part : ModelInstaller::parts(*folders_, *order_)) failure_ += "\n" + part.url;
    }
  }
  changed();
  if (!isCancelled && onFetched) onFetched(!failure);
}

void RecognizerSetup::changed() const {
  if (onChange) onChange();
}

}  // namespace tavelo
