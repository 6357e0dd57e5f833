#include <gtest/gtest.h>

#include "commands/MacDiagnosis.h"

namespace tavelo {
namespace {

MacFacts goodMac() {
  MacFacts facts;
  facts.accessibilityTrusted = facts.listenEventAccess = facts.monitors = true;
  facts.tapEnabled = true;
  facts.globeKey = GlobeKeyUsage::nothing;
  facts.microphone = platform::CaptureAuthorizationStatus::authorized;
  facts.speech = platform::SpeechAuthorizationStatus::authorized;
  facts.hasSoundInput = facts.hasRecognizer = facts.recognizerIsAvailable = true;
  facts.cacheFolder = "/Users/an/Library/Application Support/Tavelo";
  return facts;
}

TEST(MacDiagnosis, BlamesWhatIsAmissAndFailsOnlyWhereNoDictationCouldWork) {
  using Microphone = platform::CaptureAuthorizationStatus;
  using Speech = platform::SpeechAuthorizationStatus;
  struct Case {
    void (*spoil)(MacFacts&);
    const char* expected;
  };
  const Case cases[] = {
      {[](MacFacts&) {}, "works"},
      {[](MacFacts& f) { f.accessibilityTrusted = false, f.tapEnabled.reset(); },
       "accessibility broken, event tap limited, key monitors limited, fails"},
      {[](MacFacts& f) { f.tapEnabled = false; }, "event tap limited, works"},
      {[](MacFacts& f) { f.listenEventAccess = f.monitors = false; },
       "input monitoring limited, key monitors limited, works"},
      {[](MacFacts& f) { f.secureInput = true; }, "secure input limited, works"},
      {[](MacFacts& f) { f.globeKey.reset(); }, "Globe key limited, works"},
      {[](MacFacts& f) { f.globeKey = static_cast<GlobeKeyUsage>(17); }, "Globe key limited, works"},
      {[](MacFacts& f) { f.microphone = Microphone::denied, f.hasSoundInput = false; },
       "microphone broken, sound input broken, fails"},
      {[](MacFacts& f) { f.microphone = Microphone::notDetermined, f.speech = Speech::notDetermined; },
       "microphone limited, speech limited, works"},
      {[](MacFacts& f) { f.speech = Speech::restricted; }, "speech broken, fails"},
      {[](MacFacts& f) { f.hasRecognizer = false; }, "recogniser broken, fails"},
      {[](MacFacts& f) { f.recognizerIsAvailable = false; }, "recogniser broken, fails"},
      {[](MacFacts& f) { f.cacheFolderError = "read-only"; }, "history folder limited, works"},
  };
  for (const auto& each : cases) {
    auto facts = goodMac();
    each.spoil(facts);
    const auto findings = diagnose(facts);
    std::string outcome;
    for (const auto& finding : findings) {
      if (finding.verdict == Verdict::limited) outcome += finding.service + " limited, ";
      if (finding.verdict == Verdict::broken) outcome += finding.service + " broken, ";
    }
    EXPECT_EQ(outcome + (canDictate(findings) ? "works" : "fails"), each.expected);
  }
}

}  // namespace
}  // namespace tavelo
