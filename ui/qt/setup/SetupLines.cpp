#include "ui/qt/setup/SetupLines.h"

#include <algorithm>

#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

LineState conditionLine(const RecognizerCondition& condition, const RecognizerFacts& facts) {
  using enum RecognizerCondition::State;
  switch (condition.state) {
    case missing:
      return {Mark::missing, setuptexts::noRecognizer};
    case loading:
      return {Mark::working, setuptexts::loading};
    case ready:
      return {Mark::done, setuptexts::modelWorks};
    case failed:
      return {Mark::missing, filled(setuptexts::modelFails, condition.detail)};
    case server:
      break;
  }
  if (!facts.trialFailure.empty())
    return {Mark::missing, filled(setuptexts::serverFails, facts.trialFailure)};
  return {Mark::done, filled(setuptexts::serverWorks, condition.detail)};
}

const char* refusal(platform::KeyUse use) {
  using enum platform::KeyUse;
  switch (use) {
    case types:
      return setuptexts::keyTypes;
    case dailyModifier:
      return setuptexts::keyIsModifier;
    case commands:
      return setuptexts::keyCommands;
    case locks:
      return setuptexts::keyLocks;
    case unknown:
      return setuptexts::keyUnknown;
    case free:
      break;
  }
  return setuptexts::pressKey;
}

}  // namespace

LineState microphoneLine(const MicrophoneFacts& facts) {
  if (!facts.list.error.empty()) return {Mark::missing, setuptexts::noSoundServer};
  if (!facts.isAnswered) return {Mark::working, setuptexts::lookingForMicrophones};
  if (facts.list.sources.empty()) return {Mark::missing, setuptexts::noMicrophone};
  if (!facts.error.empty()) return {Mark::missing, filled(setuptexts::cannotRecord, facts.error)};
  if (!facts.hasHeard)
    return {Mark::missing, facts.isSilent ? setuptexts::nothingHeard : setuptexts::speakNow};
  const bool isHere =
      facts.chosen.empty() ||
      std::ranges::find(facts.list.sources, facts.chosen, &SoundSource::name) != facts.list.sources.end();
  const std::string works = setuptexts::microphoneWorks;
  return {Mark::done, isHere ? works : works + " " + setuptexts::chosenIsGone};
}

LineState recognizerLine(const RecognizerFacts& facts) {
  switch (facts.fetch) {
    case FetchState::looking:
      return {Mark::working, setuptexts::looking};
    case FetchState::fetching:
      return {Mark::working, setuptexts::fetching};
    case FetchState::paused:
      return {Mark::working, setuptexts::paused};
    case FetchState::unpacking:
      return {Mark::working, setuptexts::unpacking};
    case FetchState::failed:
    case FetchState::none:
      break;
  }
  if (facts.isTrying) return {Mark::working, setuptexts::trying};
  auto line = conditionLine(facts.condition, facts);
  // What works is not spoilt by an attempt to replace it.
  if (line.mark == Mark::done) return line;
  if (facts.fetch == FetchState::failed) return {Mark::missing, setuptexts::fetchFailed};
  return line;
}

LineState keyLine(const KeyLineFacts& facts) {
  if (!facts.canWatch) return {Mark::missing, setuptexts::noKeys};
  if (facts.isChoosing) return {Mark::working, filled(refusal(facts.refused.use), facts.refused.name)};
  if (!facts.wasHeld) return {Mark::missing, filled(setuptexts::tryKey, facts.holdKey)};
  return {Mark::done, filled(setuptexts::keyWorks, facts.holdKey)};
}

LineState accessibilityLine(AccessibilityCondition condition, const std::vector<std::string>& unreachable) {
  if (condition == AccessibilityCondition::noBus) return {Mark::missing, setuptexts::accessibilityMissing};
  if (condition == AccessibilityCondition::off) return {Mark::missing, setuptexts::accessibilityOff};
  if (unreachable.empty()) return {Mark::done, setuptexts::accessibilityOn};
  std::string names;
  for (const auto& each : unreachable) names += (names.empty() ? "" : ", ") + each;
  return {Mark::done, filled(setuptexts::restartThese, names)};
}

}  // namespace tavelo
