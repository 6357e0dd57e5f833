#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/Diagnosis.h"

namespace tavelo {
namespace {

DesktopFacts goodDesktop() {
  DesktopFacts facts;
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
std::string outcome(const DesktopFacts& facts) {
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
    void (*spoil)(DesktopFacts&);
    const char* expected;
  };
  const Case cases[] = {
      {[](DesktopFacts&) {}, "works"},
      {[](DesktopFacts& f) { f.display.reset(), f.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, window manager limited, fails"},
      {[](DesktopFacts& f) { f.waylandSession = true, f.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, fails"},
      {[](DesktopFacts& f) { f.unknownHoldKey = "Fn"; }, "hold key limited, works"},
      {[](DesktopFacts& f) { f.keyboardHasHoldKey = false; }, "hold key limited, works"},
      {[](DesktopFacts& f) { f.accessibilityEnabled = false; }, "accessibility limited, works"},
      {[](DesktopFacts& f) { f.windowManager.reset(); }, "window manager limited, works"},
      {[](DesktopFacts& f) { f.statusArea = f.clipboard = false; },
       "status area limited, clipboard limited, works"},
      {[](DesktopFacts& f) { f.microphoneError = "busy"; }, "sound input broken, fails"},
      {[](DesktopFacts& f) { f.recognizerIsConfigured = false; }, "recogniser broken, fails"},
      {[](DesktopFacts& f) { f.recognizerError = "refused"; }, "recogniser broken, fails"},
      {[](DesktopFacts& f) { f.cacheFolderError = "read-only"; }, "history folder limited, works"},
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
