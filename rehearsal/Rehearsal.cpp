#include "rehearsal/Rehearsal.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <variant>

#include "rehearsal/ExpectationCheck.h"
#include "rehearsal/RehearsalServices.h"
#include "rehearsal/StoryStage.h"

namespace tavelo::rehearsal {
namespace {

using platform::Seconds;

/// The pasteboard may still be restored, and a notice hidden, this long after the last step.
constexpr Seconds afterTheLastStep{6.0};
/// How much longer than the sound we wait for the microphone to deliver all of it.
constexpr Seconds patienceWithAudio{30.0};

simulated::DesktopOptions optionsFor(const std::optional<RehearsalAudio>& audio) {
  simulated::DesktopOptions options;
  if (audio) {
    options.time = audio->time;
    options.speech = audio->speech;
  }
  return options;
}

/// One run of one story.
class Rehearsal final {
 public:
  Rehearsal(const Story& story, const std::optional<RehearsalAudio>& audio,
            const std::function<void(const TimelineEntry&)>& reader)
      : story_(story), audio_(audio), timeline_(reader), stage_(story.desktop, optionsFor(audio)) {
    stage_.desktop().observe([this](const simulated::WorldEvent& event) { timeline_.add(event); });
  }

  RehearsalResult run() {
    launch();
    if (audio_) {
      playWithAudio();
    } else {
      play(story_.steps, Seconds{0});
      stage_.desktop().advance(story_.steps.back().at + afterTheLastStep);
      check(story_.expectation);
    }
    result_.fields = stage_.fieldTexts();
    result_.history = stage_.history();
    return std::move(result_);
  }

  void operator()(const action::PressKey& action) { moveKeys(action.key, true); }
  void operator()(const action::ReleaseKey& action) { moveKeys(action.key, false); }
  void operator()(const action::TapKeys& action) {
    moveKeys(action.chord, true);
    moveKeys(action.chord, false);
  }
  void operator()(const action::InterruptHold& /*action*/) { stage_.desktop().keyboard().interruptHold(); }
  void operator()(const action::Hears& action) {
    hear({.after = {}, .transcript = action.text, .isFinal = action.isFinal, .error = std::nullopt});
  }
  void operator()(const action::RecognitionError& /*action*/) {
    hear({.after = {}, .transcript = std::nullopt, .isFinal = false, .error = "recognition failed"});
  }
  void operator()(const action::MoveFocus& action) { stage_.moveFocus(action.to); }
  void operator()(const action::Quit& action) { stage_.application(action.application).terminate(); }
  void operator()(const action::Hang& action) { stage_.application(action.application).hang(); }
  void operator()(const action::Wake& action) { stage_.application(action.application).wake(); }
  void operator()(const action::Copy& action) { stage_.desktop().pasteboard().copy(action.text); }
  void operator()(const action::ChooseCommand& action) { choose(action.command); }
  void operator()(const action::ConfirmReview& action) {
    if (delegate_) delegate_->reviewWindow().confirm(action.text);
  }
  void operator()(const action::CancelReview& /*action*/) {
    if (delegate_) delegate_->reviewWindow().dismiss();
  }
  void operator()(const action::GrantAccessibility& /*action*/) {
    stage_.desktop().accessibility().setTrusted(true);
  }
  void operator()(const action::Expect& action) { check(action.expectation); }

 private:
  simulated::SimulatedLoop& loop() { return stage_.desktop().loop(); }

  void launch() {
    delegate_ = std::make_shared<AppDelegate<RehearsalServices>>();
    delegate_->applicationDidFinishLaunching([this] { loop().async([this] { delegate_.reset(); }); });
    observeWindows();
  }

  void observeWindows() {
    delegate_->statusController().onChange = [this](const std::string& what) {
      if (what == "idle") timeline_.dictationEnded(loop().uptime());
      timeline_.add(loop().uptime(), "state", what);
    };
    delegate_->floatingStatus().onChange = [this](const RehearsalOverlay& overlay) {
      const bool isHidden = overlay.state() == OverlayState::hidden;
      timeline_.add(loop().uptime(), "overlay",
                    nameOf(overlay.state()) + (isHidden ? "" : quotedIfAny(overlay.detail())));
    };
    delegate_->reviewWindow().onChange = [this](const RehearsalReviewWindow& window) {
      timeline_.add(loop().uptime(), "review",
                    window.text() ? "open" + quotedIfAny(*window.text()) : "closed");
    };
  }

  static std::string quotedIfAny(const std::string& text) {
    return text.empty() ? "" : " " + simulated::quoted(text);
  }

  /// Schedules the steps, each `delay` later than in the story.
  void play(const std::vector<Step>& steps, Seconds delay) {
    for (const auto& step : steps) {
      loop().asyncAt(platform::toUptime(step.at + delay), [this, &step] { std::visit(*this, step.action); });
    }
  }

  void playWithAudio() {
    stage_.desktop().microphone().play(audio_->samples);
    const auto steps = stepsWithoutWords();
    const auto release = std::ranges::find_if(steps, endsDictation);
    if (release == steps.end()) {
      fail("the story has no step that ends the dictation");
      return;
    }
    const std::vector<Step> before(steps.begin(), release);
    const std::vector<Step> after(release, steps.end());
    play(before, Seconds{0});
    const auto& microphone = stage_.desktop().microphone();
    const auto decided = [&] {
      return microphone.lastSampleDelivered().has_value() || !delegate_->statusController().alerts().empty();
    };
    const Seconds duration{static_cast<double>(audio_->samples.size()) / 16000.0};
    loop().runUntil(decided, release->at + duration + patienceWithAudio);
    if (!microphone.lastSampleDelivered()) {
      fail("the sound was not listened to");
      return;
    }
    const auto lastSample = *microphone.lastSampleDelivered();
    const Seconds delay = lastSample + audio_->releaseAfter - release->at;
    play(after, delay);
    loop().runUntil(platform::toUptime(after.back().at + delay + afterTheLastStep));
    if (stage_.history().empty()) fail("nothing was recognised");
  }

  /// The steps that do not depend on the words that the story's recogniser hears.
  std::vector<Step> stepsWithoutWords() const {
    std::vector<Step> steps;
    std::ranges::copy_if(story_.steps, std::back_inserter(steps), [](const Step& step) {
      return !std::holds_alternative<action::Hears>(step.action) &&
             !std::holds_alternative<action::RecognitionError>(step.action) &&
             !std::holds_alternative<action::Expect>(step.action);
    });
    return steps;
  }

  static bool endsDictation(const Step& step) {
    const auto* release = std::get_if<action::ReleaseKey>(&step.action);
    return release != nullptr && release->key == "fn";
  }

  void moveKeys(const std::string& chord, bool down) {
    auto keys = simulated::parseChord(chord).value();
    if (!down) std::ranges::reverse(keys);
    for (const auto key : keys) {
      if (down) {
        stage_.desktop().keyboard().press(key);
      } else {
        stage_.desktop().keyboard().release(key);
      }
    }
  }

  void hear(const simulated::RecognitionStep& step) {
    if (!stage_.desktop().speech().answerNow(step)) fail("nobody listens to the recogniser");
  }

  void choose(MenuCommand command) {
    if (!delegate_) return;
    auto& menu = delegate_->statusController();
    const auto& chosen = [&]() -> const std::function<void()>& {
      switch (command) {
        case MenuCommand::toggleDictation:
          return menu.onToggleDictation;
        case MenuCommand::toggleInsertMode:
          return menu.onToggleInsertMode;
        case MenuCommand::showPermissions:
          return menu.onShowPermissions;
        case MenuCommand::testInsert:
          return menu.onTestInsert;
        case MenuCommand::insertLastText:
          return menu.onInsertLastText;
        case MenuCommand::quit:
          break;
      }
      return menu.onQuit;
    }();
    chosen();
  }

  void check(const Expectation& expectation) {
    for (const auto& deviation : findDeviations(expectation, stage_, delegate_.get())) fail(deviation);
  }

  void fail(const std::string& what) {
    result_.failures.push_back(what);
    timeline_.add(loop().uptime(), "FAILED", what);
  }

  const Story& story_;
  const std::optional<RehearsalAudio>& audio_;
  Timeline timeline_;
  StoryStage stage_;
  std::shared_ptr<AppDelegate<RehearsalServices>> delegate_;
  RehearsalResult result_;
};

}  // namespace

RehearsalResult rehearse(const Story& story, const std::optional<RehearsalAudio>& audio,
                         const std::function<void(const TimelineEntry&)>& reader) {
  return Rehearsal(story, audio, reader).run();
}

}  // namespace tavelo::rehearsal
