#include "commands/X11Diagnosis.h"

#include "commands/InputOutput.h"

namespace tavelo {
namespace {

using enum Verdict;

Finding display(const X11Facts& facts) {
  if (facts.waylandSession) {
    return {"display", broken,
            "a Wayland session shows its keys to nobody: log out, and choose an X11 (Xorg) session at "
            "the log-in screen"};
  }
  if (!facts.display) {
    return {"display", broken,
            "no X11 display: start this from a terminal on the desktop, or set DISPLAY (“:0” in most "
            "cases)"};
  }
  return {"display", fine, *facts.display};
}

Finding rawKeys(const X11Facts& facts) {
  if (facts.rawKeys) return {"raw keys", fine, "every key is seen, whoever has the focus"};
  return {"raw keys", broken,
          facts.display && !facts.waylandSession
              ? "the X server lacks XInput 2.2: use an Xorg server, not a bare VNC one"
              : "none without an X11 session"};
}

Finding holdKey(const X11Facts& facts) {
  constexpr const char* advice =
      "set TAVELO_FN_KEY to a key that you have, for example Pause, F8 or Menu; Control-Alt-V works "
      "meanwhile";
  if (facts.unknownHoldKey) {
    return {"hold key", limited,
            "no key is called “" + onOneLine(*facts.unknownHoldKey) + "” (" + facts.holdKeyOrigin +
                "), so it is " + facts.holdKey + "; " + advice};
  }
  if (!facts.rawKeys) return {"hold key", limited, facts.holdKey + " would be held"};
  if (!facts.keyboardHasHoldKey) {
    return {"hold key", limited, facts.holdKey + ", but this keyboard has none: " + advice};
  }
  return {"hold key", fine, facts.holdKey + " (" + facts.holdKeyOrigin + "); TAVELO_FN_KEY names another"};
}

Finding windowManager(const X11Facts& facts) {
  if (!facts.display) return {"window manager", limited, "none without a display"};
  if (!facts.windowManager) {
    return {"window manager", limited,
            "none, or one that tells nothing: text may miss its window when you change windows "
            "meanwhile; start one, for example openbox"};
  }
  const std::string name = facts.windowManager->empty() ? "runs" : onOneLine(*facts.windowManager);
  if (!facts.namesActiveWindow) {
    return {"window manager", limited,
            name +
                ": does not say which window is active (_NET_ACTIVE_WINDOW), so the one with the focus "
                "counts"};
  }
  return {"window manager", fine, name};
}

Finding clipboard(const X11Facts& facts) {
  if (!facts.clipboard) return {"clipboard", limited, "cannot be reached, so nothing can be pasted"};
  return {"clipboard", fine, facts.clipboardManager ? "reached; a clipboard manager keeps it" : "reached"};
}

}  // namespace

DisplayServerFindings diagnose(const X11Facts& facts) {
  return {.display = display(facts),
          .rawKeys = rawKeys(facts),
          .holdKey = holdKey(facts),
          .windowManager = windowManager(facts),
          .clipboard = clipboard(facts)};
}

}  // namespace tavelo
