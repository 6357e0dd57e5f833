#include "commands/MacDiagnosis.h"

#include <utility>

namespace tavelo {
namespace {

using enum Verdict;

/// Where the user grants a permission.
std::string inPrivacySettings(const std::string& pane) {
  return "allow Tavelo in System Settings, Privacy & Security, " + pane;
}

Finding accessibility(const MacFacts& facts) {
  if (facts.accessibilityTrusted) return {"accessibility", fine, "granted"};
  return {"accessibility", broken,
          "not granted, so no key is seen: choose “Cấp quyền...” in Tavelo's menu, or " +
              inPrivacySettings("Accessibility") + "; if it is on there, switch it off and on again"};
}

Finding inputMonitoring(const MacFacts& facts) {
  if (facts.listenEventAccess) return {"input monitoring", fine, "granted"};
  return {"input monitoring", limited,
          "not granted: if Fn is not seen, " + inPrivacySettings("Input Monitoring")};
}

Finding eventTap(const MacFacts& facts) {
  if (!facts.tapEnabled) {
    return {"event tap", limited,
            "refused, so Fn is not seen in Tavelo's own windows: grant accessibility, then choose “Cấp "
            "quyền...” in Tavelo's menu"};
  }
  if (*facts.tapEnabled) return {"event tap", fine, "sees the keys of every application"};
  return {"event tap", limited,
          "switched off by macOS, so Fn is not seen in Tavelo's own windows: quit Tavelo and start it again"};
}

Finding monitors(const MacFacts& facts) {
  if (!facts.monitors) return {"key monitors", limited, "refused: quit Tavelo and start it again"};
  if (!facts.accessibilityTrusted) return {"key monitors", limited, "see nothing without accessibility"};
  return {"key monitors", fine, "see the keys of the other applications"};
}

Finding secureInput(const MacFacts& facts) {
  if (!facts.secureInput) return {"secure input", fine, "off"};
  return {"secure input", limited,
          "on, which hides every key from Tavelo: leave the password field, or switch off “Secure Keyboard "
          "Entry” in the terminal's menu"};
}

Finding globeKey(const MacFacts& facts) {
  constexpr const char* advice = ": choose “Do Nothing” in System Settings, Keyboard, “Press Globe key to”";
  if (!facts.globeKey) return {"Globe key", limited, "as the keyboard brings it along" + std::string(advice)};
  switch (*facts.globeKey) {
    case GlobeKeyUsage::nothing:
      return {"Globe key", fine, "does nothing else"};
    case GlobeKeyUsage::changeInputSource:
      return {"Globe key", limited, "also changes the input source" + std::string(advice)};
    case GlobeKeyUsage::showEmoji:
      return {"Globe key", limited, "also shows the emoji" + std::string(advice)};
    case GlobeKeyUsage::dictation:
      return {"Globe key", limited, "also starts macOS's own dictation" + std::string(advice)};
  }
  return {"Globe key", limited, "does something else too" + std::string(advice)};
}

/// A permission that macOS asks for at the first dictation.
template <class Status>
Finding permission(std::string service, Status status, const std::string& pane) {
  switch (status) {
    case Status::authorized:
      return {std::move(service), fine, "granted"};
    case Status::notDetermined:
      return {std::move(service), limited, "not asked for yet: the first dictation does"};
    case Status::restricted:
      return {std::move(service), broken, "restricted on this Mac: ask who manages it"};
    case Status::denied:
      break;
  }
  return {std::move(service), broken, "refused: " + inPrivacySettings(pane)};
}

Finding soundInput(const MacFacts& facts) {
  if (facts.hasSoundInput) return {"sound input", fine, "there is one"};
  return {"sound input", broken, "none: plug a microphone in, or choose one in System Settings, Sound"};
}

Finding recognizer(const MacFacts& facts) {
  if (!facts.hasRecognizer)
    return {"recogniser", broken, "this macOS does not recognise Vietnamese: update it"};
  if (facts.recognizerIsAvailable) return {"recogniser", fine, "macOS's own, for Vietnamese"};
  return {"recogniser", broken, "not available now: check the connection to the network"};
}

}  // namespace

std::vector<Finding> diagnose(const MacFacts& facts) {
  return {accessibility(facts),
          inputMonitoring(facts),
          eventTap(facts),
          monitors(facts),
          secureInput(facts),
          globeKey(facts),
          permission("microphone", facts.microphone, "Microphone"),
          soundInput(facts),
          permission("speech", facts.speech, "Speech Recognition"),
          recognizer(facts),
          historyFolder(facts.cacheFolder, facts.cacheFolderError)};
}

}  // namespace tavelo
