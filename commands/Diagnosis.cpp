#include "commands/Diagnosis.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "commands/Output.h"

namespace tavelo {
namespace {

Finding fine(std::string service, std::string words) {
  return {.service = std::move(service), .verdict = Verdict::fine, .words = std::move(words)};
}

Finding limited(std::string service, std::string words) {
  return {.service = std::move(service), .verdict = Verdict::limited, .words = std::move(words)};
}

Finding broken(std::string service, std::string words) {
  return {.service = std::move(service), .verdict = Verdict::broken, .words = std::move(words)};
}

Finding display(const LinuxFacts& facts) {
  if (facts.waylandSession) {
    return broken("display",
                  "a Wayland session shows its keys to nobody: log out, and choose an X11 (Xorg) session at "
                  "the log-in screen");
  }
  if (!facts.display) {
    return broken("display",
                  "no X11 display: start this from a terminal on the desktop, or set DISPLAY (“:0” in most "
                  "cases)");
  }
  return fine("display", *facts.display);
}

Finding rawKeys(const LinuxFacts& facts) {
  if (facts.rawKeys) return fine("raw keys", "every key is seen, whoever has the focus");
  return broken("raw keys", facts.display && !facts.waylandSession
                                ? "the X server lacks XInput 2.2: use an Xorg server, not a bare VNC one"
                                : "none without an X11 session");
}

Finding holdKey(const LinuxFacts& facts) {
  constexpr const char* advice =
      "set TAVELO_FN_KEY to a key that you have, for example Pause, F8 or Menu; Control-Alt-V works "
      "meanwhile";
  if (facts.unknownHoldKey) {
    return limited("hold key", "no key is called “" + onOneLine(*facts.unknownHoldKey) + "”, so " +
                                   facts.holdKey + " is Fn; " + advice);
  }
  if (!facts.rawKeys) return limited("hold key", facts.holdKey + " would be Fn");
  if (!facts.keyboardHasHoldKey) {
    return limited("hold key", facts.holdKey + " is Fn, but this keyboard has none: " + advice);
  }
  return fine("hold key", facts.holdKey + " is Fn; TAVELO_FN_KEY names another");
}

Finding accessibilityBus(const LinuxFacts& facts) {
  if (facts.accessibilityBus) return fine("accessibility bus", "answers");
  return limited("accessibility bus",
                 "does not answer, so text goes in by pasting only: install at-spi2-core and log in again");
}

Finding accessibilitySwitch(const LinuxFacts& facts) {
  if (facts.accessibilityEnabled) return fine("accessibility", "on");
  if (!facts.accessibilityBus) return limited("accessibility", "off while the bus does not answer");
  return limited("accessibility",
                 "off: choose “Cấp quyền...” in Tavelo's menu, then restart your applications");
}

Finding windowManager(const LinuxFacts& facts) {
  if (!facts.display) return limited("window manager", "none without a display");
  if (!facts.windowManager) {
    return limited("window manager",
                   "none, or one that tells nothing: text may miss its window when you change windows "
                   "meanwhile; start one, for example openbox");
  }
  const std::string name = facts.windowManager->empty() ? "runs" : onOneLine(*facts.windowManager);
  if (!facts.namesActiveWindow) {
    return limited("window manager", name +
                                         ": does not say which window is active (_NET_ACTIVE_WINDOW), so "
                                         "the one with the focus counts");
  }
  return fine("window manager", name);
}

Finding statusArea(const LinuxFacts& facts) {
  if (facts.statusArea) return fine("status area", "shows the menu");
  return limited("status area",
                 "none: run “tavelo” once more to open the menu; on GNOME, the AppIndicator extension brings "
                 "one");
}

Finding clipboard(const LinuxFacts& facts) {
  if (!facts.clipboard) return limited("clipboard", "cannot be reached, so nothing can be pasted");
  return fine("clipboard", facts.clipboardManager ? "reached; a clipboard manager keeps it" : "reached");
}

Finding soundInput(const LinuxFacts& facts) {
  if (facts.microphoneError.empty()) return fine("sound input", "the microphone opens");
  return broken("sound input",
                "“" + onOneLine(facts.microphoneError) +
                    "”: plug a microphone in, choose it in the sound settings, and see that the "
                    "sound server (PulseAudio or PipeWire) runs");
}

Finding recognizer(const LinuxFacts& facts) {
  if (!facts.recognizerIsConfigured) {
    const std::string reason =
        facts.recognizerError.empty() ? "" : " (" + onOneLine(facts.recognizerError) + ")";
    return broken("recogniser",
                  "none" + reason +
                      ": run “scripts/get-model vi_VN”, or set TAVELO_RECOGNIZER to the address "
                      "of a Vosk server, such as ws://host:2700");
  }
  const std::string name = onOneLine(facts.recognizer);
  if (facts.recognizerError.empty()) return fine("recogniser", name);
  return broken("recogniser",
                name + ": " + onOneLine(facts.recognizerError) + "; start it, or correct what names it");
}

Finding cacheFolder(const LinuxFacts& facts) {
  const std::string folder = onOneLine(facts.cacheFolder);
  if (facts.cacheFolderError.empty()) return fine("history folder", folder);
  return limited("history folder",
                 folder + ": " + onOneLine(facts.cacheFolderError) +
                     ", so dictations are not kept: make it a folder that you may write to");
}

const char* nameOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::fine:
      return "fine";
    case Verdict::limited:
      return "limited";
    case Verdict::broken:
      break;
  }
  return "broken";
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text + "  ";
}

}  // namespace

std::vector<Finding> diagnose(const LinuxFacts& facts) {
  return {display(facts),
          rawKeys(facts),
          holdKey(facts),
          accessibilityBus(facts),
          accessibilitySwitch(facts),
          windowManager(facts),
          statusArea(facts),
          clipboard(facts),
          soundInput(facts),
          recognizer(facts),
          cacheFolder(facts)};
}

bool canDictate(const std::vector<Finding>& findings) {
  return std::ranges::none_of(findings, [](const Finding& each) { return each.verdict == Verdict::broken; });
}

std::string describe(const std::vector<Finding>& findings) {
  std::size_t serviceWidth = 0;
  for (const auto& each : findings) serviceWidth = std::max(serviceWidth, each.service.size());
  std::string lines;
  for (const auto& each : findings) {
    lines += padded(nameOf(each.verdict), 7) + padded(each.service, serviceWidth) + each.words + '\n';
  }
  return lines;
}

}  // namespace tavelo
