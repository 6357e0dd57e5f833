#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/LinuxDiagnosis.h"
#include "commands/X11Diagnosis.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

struct Desktop {
  X11Facts x11;
  LinuxFacts system;
};

Desktop goodDesktop() {
  Desktop desktop;
  auto& [x11, system] = desktop;
  x11.display = ":0";
  x11.rawKeys = x11.keyboardHasHoldKey = x11.namesActiveWindow = x11.clipboard = true;
  x11.holdKey = "Right Control";
  x11.windowManager = "Openbox";
  system.accessibilityBus = system.accessibilityEnabled = system.statusArea = true;
  system.recognizer = "by the server";
  system.recognizerIsConfigured = true;
  system.cacheFolder = "/home/an/.local/share/Tavelo";
  return desktop;
}

std::vector<Finding> diagnose(const Desktop& desktop) {
  return diagnose(desktop.system, diagnose(desktop.x11));
}

/// The verdicts that are not "fine", each with its service, and whether a dictation could work.
std::string outcome(const Desktop& desktop) {
  const auto findings = diagnose(desktop);
  std::string text;
  for (const auto& each : findings) {
    if (each.verdict == Verdict::limited) text += each.service + " limited, ";
    if (each.verdict == Verdict::broken) text += each.service + " broken, ";
  }
  return text + (canDictate(findings) ? "works" : "fails");
}

TEST(Diagnosis, BlamesWhatIsAmissAndFailsOnlyWhereNoDictationCouldWork) {
  struct Case {
    void (*spoil)(Desktop&);
    const char* expected;
  };
  const Case cases[] = {
      {[](Desktop&) {}, "works"},
      {[](Desktop& d) { d.x11.display.reset(), d.x11.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, window manager limited, fails"},
      {[](Desktop& d) { d.x11.waylandSession = true, d.x11.rawKeys = false; },
       "display broken, raw keys broken, hold key limited, fails"},
      {[](Desktop& d) { d.x11.unknownHoldKey = "Fn"; }, "hold key limited, works"},
      {[](Desktop& d) { d.x11.keyboardHasHoldKey = false; }, "hold key limited, works"},
      {[](Desktop& d) { d.system.accessibilityEnabled = false; }, "accessibility limited, works"},
      {[](Desktop& d) { d.x11.windowManager.reset(); }, "window manager limited, works"},
      {[](Desktop& d) { d.system.statusArea = d.x11.clipboard = false; },
       "status area limited, clipboard limited, works"},
      {[](Desktop& d) { d.system.microphoneError = "busy"; }, "sound input broken, fails"},
      {[](Desktop& d) { d.system.microphoneAsked = "usb", d.system.microphone = "built-in"; },
       "sound input limited, works"},
      {[](Desktop& d) { d.system.settingsError = "line 3"; }, "settings limited, works"},
      {[](Desktop& d) { d.system.recognizerIsConfigured = false; }, "recogniser broken, fails"},
      {[](Desktop& d) { d.system.recognizerError = "refused"; }, "recogniser broken, fails"},
      {[](Desktop& d) { d.system.cacheFolderError = "read-only"; }, "history folder limited, works"},
  };
  for (const auto& each : cases) {
    auto desktop = goodDesktop();
    each.spoil(desktop);
    EXPECT_EQ(outcome(desktop), each.expected);
  }
}

TEST(Diagnosis, SaysEachServiceInOneLineWhateverItsNameHolds) {
  auto desktop = goodDesktop();
  desktop.system.microphoneError = "Mic\n\x1b[2J";
  desktop.system.recognizerOrigin = "from TAVELO_RECOGNIZER";
  desktop.system.recognizerEngine = "sherpa-onnx 1.13.8";
  desktop.system.recognizerLastFailure = "at noon:\nit ended";
  EXPECT_THAT(
      describe(diagnose(desktop)),
      testing::AllOf(testing::HasSubstr("broken   sound input        “Mic⏎"),
                     testing::HasSubstr("fine     recogniser         sherpa-onnx 1.13.8 by the server (from "
                                        "TAVELO_RECOGNIZER); it works now, but failed at noon:⏎it ended"),
                     testing::Not(testing::HasSubstr("\x1b"))));
}

TEST(Diagnosis, OffersACommandOnlyWhereItMends) {
  struct Case {
    void (*spoil)(Desktop&);
    std::string fix;
  };
  for (const auto& [spoil, fix] : {
           Case{[](Desktop& d) { d.system.recognizerIsConfigured = false; }, "tavelo get-model"},
           {[](Desktop& d) { d.system.recognizerIsConfigured = false, d.system.recognizerIsNamed = true; },
            "tavelo setup"},
           {[](Desktop& d) { d.system.recognizerError = "damaged"; }, "tavelo get-model --replace"},
           {[](Desktop& d) { d.system.recognizerError = language::say(language::words::serverIsFull); }, ""},
           {[](Desktop& d) { d.system.recognizerIsLoading = true; }, ""},
           {[](Desktop& d) { d.system.microphoneError = "busy"; }, "tavelo setup"},
           {[](Desktop& d) { d.system.microphoneError = "none", d.system.soundServerStart = "start it"; },
            "start it"},
       }) {
    auto desktop = goodDesktop();
    spoil(desktop);
    const auto findings = diagnose(desktop);
    const auto found =
        std::ranges::find_if(findings, [](const auto& each) { return each.verdict != Verdict::fine; });
    ASSERT_NE(found, findings.end());
    EXPECT_EQ(found->fix, fix) << found->words;
    const auto line = fix.empty() ? "\n" : "\n  do: " + fix + "\n";
    EXPECT_THAT(describe(findings), testing::HasSubstr(found->words + line));
  }
}

}  // namespace
}  // namespace tavelo
