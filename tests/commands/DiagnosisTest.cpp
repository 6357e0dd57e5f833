#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Diagnosis.h"

namespace tavelo {
namespace {

LinuxFacts goodDesktop() {
  LinuxFacts facts;
  facts.display = ":0";
  facts.rawKeys = facts.keyboardHasHoldKey = true;
  facts.holdKey = "Right Control";
  facts.accessibilityBus = facts.accessibilityEnabled = facts.namesActiveWindow = true;
  facts.windowManager = "Openbox";
  facts.statusArea = facts.clipboard = true;
  facts.recognizer = "by the server";
  facts.recognizerIsConfigured = true;
  facts.cacheFolder = "/home/an/.local/share/Tavelo";
  return facts;
}

/// The verdicts that are not "fine", each with its service, and whether a dictation could work.
std::string outcome(const LinuxFacts& facts) {
  const auto findings = diagnose(facts);
  std::string text;
  for (const auto& each : findings) {
    if (each.verdict == Verdict::limited) text += each.service + " limited, ";
    if (each.verdict == Verdict::broken) text += each.service + " broken, ";
  }
  return text + (canDictate(findings) ? "works" : "fails");
}

TEST(Diagnosis, BlamesWhatIsAmissAndFailsOnlyWhereNoDictationCouldWork) {
  struct Case {
    void (*spoil)(LinuxFacts&);
    const char* expected;
  };
  const Case cases[] = {
      {[](LinuxFacts&) {}, "works"},
      {[](LinuxFacts& f) { f.display.reset(), f.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, window manager limited, fails"},
      {[](LinuxFacts& f) { f.waylandSession = true, f.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, fails"},
      {[](LinuxFacts& f) { f.unknownHoldKey = "Fn"; }, "hold key limited, works"},
      {[](LinuxFacts& f) { f.keyboardHasHoldKey = false; }, "hold key limited, works"},
      {[](LinuxFacts& f) { f.accessibilityEnabled = false; }, "accessibility limited, works"},
      {[](LinuxFacts& f) { f.windowManager.reset(); }, "window manager limited, works"},
      {[](LinuxFacts& f) { f.statusArea = f.clipboard = false; },
       "status area limited, clipboard limited, works"},
      {[](LinuxFacts& f) { f.microphoneError = "busy"; }, "sound input broken, fails"},
      {[](LinuxFacts& f) { f.recognizerIsConfigured = false; }, "recogniser broken, fails"},
      {[](LinuxFacts& f) { f.recognizerError = "refused"; }, "recogniser broken, fails"},
      {[](LinuxFacts& f) { f.cacheFolderError = "read-only"; }, "history folder limited, works"},
  };
  for (const auto& each : cases) {
    auto facts = goodDesktop();
    each.spoil(facts);
    EXPECT_EQ(outcome(facts), each.expected);
  }
}

TEST(Diagnosis, SaysEachServiceInOneLineWhateverItsNameHolds) {
  auto facts = goodDesktop();
  facts.microphoneError = "Mic\n\x1b[2J";
  EXPECT_THAT(describe(diagnose(facts)),
              testing::AllOf(testing::HasSubstr("broken   sound input        “Mic⏎"),
                             testing::Not(testing::HasSubstr("\x1b"))));
}

}  // namespace
}  // namespace tavelo
