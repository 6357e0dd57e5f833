#include "commands/LinuxDiagnosis.h"

#include <utility>

#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

using enum Verdict;

constexpr const char* setUp = "tavelo setup";
constexpr const char* getModel = "tavelo get-model";
constexpr const char* getModelAgain = "tavelo get-model --replace";
/// The first for the sessions to come, where there is such a setting; the second for this one.
constexpr const char* switchAccessibilityOn =
    "gsettings set org.gnome.desktop.interface toolkit-accessibility true; "
    "busctl --user set-property org.a11y.Bus /org/a11y/bus org.a11y.Status IsEnabled b true";

Finding accessibilityBus(const LinuxFacts& facts) {
  if (facts.accessibilityBus) return {say(words::accessibilityBus), fine, say(words::busAnswers)};
  return {say(words::accessibilityBus), limited, say(words::busIsSilent), "sudo apt install at-spi2-core"};
}

Finding accessibilitySwitch(const LinuxFacts& facts) {
  if (facts.accessibilityEnabled) return {say(words::accessibility), fine, say(words::accessibilityOn)};
  if (!facts.accessibilityBus) return {say(words::accessibility), limited, say(words::offWithoutBus)};
  return {say(words::accessibility), limited, say(words::accessibilityOff), switchAccessibilityOn};
}

Finding statusArea(const LinuxFacts& facts, bool hasDisplay) {
  if (facts.statusArea) return {say(words::statusArea), fine, say(words::menuShown)};
  return {say(words::statusArea), limited, say(words::noStatusArea), hasDisplay ? "tavelo" : ""};
}

Finding soundInput(const LinuxFacts& facts) {
  if (!facts.microphoneError.empty())
    return {say(words::soundInput), broken, say(words::noMicrophone, {onOneLine(facts.microphoneError)}),
            facts.soundServerStart.empty() ? setUp : facts.soundServerStart};
  const auto asked = onOneLine(facts.microphoneAsked);
  const auto found = onOneLine(facts.microphone);
  if (!asked.empty() && asked != found)
    return {say(words::soundInput), limited, say(words::noSuchSource, {asked, facts.microphoneOrigin, found}),
            setUp};
  return {say(words::soundInput), fine, say(words::microphoneOpens, {found, facts.microphoneOrigin})};
}

Finding recognizer(const LinuxFacts& facts) {
  const auto finding = [](Verdict verdict, const std::string& text, std::string fix = {}) {
    return Finding{say(words::recogniser), verdict, text, std::move(fix)};
  };
  const std::string error = onOneLine(facts.recognizerError);
  if (!facts.recognizerIsConfigured) {
    const auto reason = error.empty() ? error : " (" + error + ")";
    return finding(broken, say(words::noRecogniserAtAll, {reason}),
                   facts.recognizerIsNamed ? setUp : getModel);
  }
  const std::string name = onOneLine(facts.recognizer) + " (" + facts.recognizerOrigin + ")";
  if (!error.empty()) {
    if (error == say(words::serverIsFull)) return finding(broken, name + ": " + error);
    return finding(broken, say(words::recogniserFails, {name, error}),
                   facts.recognizerIsNamed ? setUp : getModelAgain);
  }
  if (facts.recognizerIsLoading) return finding(limited, say(words::recogniserLoads, {name}));
  const std::string engine = onOneLine(facts.recognizerEngine);
  const std::string failure = onOneLine(facts.recognizerLastFailure);
  return finding(fine, (engine.empty() ? "" : engine + " ") + name +
                           (failure.empty() ? "" : say(words::failedBefore, {failure})));
}

}  // namespace

std::vector<Finding> diagnose(const LinuxFacts& facts, const DisplayServerFindings& displayServer) {
  std::vector findings{displayServer.display,
                       displayServer.rawKeys,
                       displayServer.holdKey,
                       accessibilityBus(facts),
                       accessibilitySwitch(facts),
                       displayServer.windowManager,
                       statusArea(facts, displayServer.display.verdict != broken),
                       displayServer.clipboard,
                       soundInput(facts),
                       recognizer(facts),
                       historyFolder(facts.cacheFolder, facts.cacheFolderError)};
  if (facts.olderProgramRuns) {
    findings.push_back(
        {say(words::runningProgram), limited, say(words::runningProgramIsOlder), "tavelo restart"});
  }
  if (!facts.settingsError.empty()) {
    findings.push_back(
        {say(words::settingsFile),
         limited,
         say(words::settingsDamaged, {onOneLine(facts.settingsFile), onOneLine(facts.settingsError)}),
         {}});
  }
  return findings;
}

}  // namespace tavelo
