#include "commands/X11Diagnosis.h"

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
constexpr const char* startWindowManager = "sudo apt install openbox && (setsid openbox &)";

Finding display(const X11Facts& facts) {
  if (facts.waylandSession) return {say(words::display), broken, say(words::waylandSession)};
  if (!facts.display) return {say(words::display), broken, say(words::noDisplay)};
  return {say(words::display), fine, *facts.display};
}

Finding rawKeys(const X11Facts& facts) {
  if (facts.rawKeys) return {say(words::rawKeys), fine, say(words::keysSeen)};
  const bool isServer = facts.display && !facts.waylandSession;
  return {say(words::rawKeys), broken, say(isServer ? words::oldServer : words::noX11Session)};
}

Finding holdKey(const X11Facts& facts) {
  const auto finding = [](Verdict verdict, std::string text, std::string fix = {}) {
    return Finding{say(words::holdKey), verdict, std::move(text), std::move(fix)};
  };
  if (facts.unknownHoldKey) {
    const auto asked = onOneLine(*facts.unknownHoldKey);
    return finding(
        limited,
        say(words::unknownHoldKey, {asked, facts.holdKey, say(words::chooseHoldKey), facts.holdKeyOrigin}),
        setUp);
  }
  if (!facts.rawKeys) return finding(limited, say(words::wouldBeHeld, {facts.holdKey}));
  if (!facts.keyboardHasHoldKey)
    return finding(limited, say(words::holdKeyMissing, {facts.holdKey, say(words::chooseHoldKey)}), setUp);
  return finding(fine, say(words::holdKeyFound, {facts.holdKey, facts.holdKeyOrigin}));
}

Finding windowManager(const X11Facts& facts) {
  const auto finding = [](Verdict verdict, std::string text, std::string fix = {}) {
    return Finding{say(words::windowManager), verdict, std::move(text), std::move(fix)};
  };
  if (!facts.display) return finding(limited, say(words::noneWithoutDisplay));
  if (!facts.windowManager) return finding(limited, say(words::noWindowManager), startWindowManager);
  const std::string name =
      facts.windowManager->empty() ? say(words::unnamedWindowManager) : onOneLine(*facts.windowManager);
  if (!facts.namesActiveWindow) return finding(limited, say(words::noActiveWindow, {name}));
  return finding(fine, name);
}

Finding clipboard(const X11Facts& facts) {
  if (!facts.clipboard) return {say(words::clipboard), limited, say(words::noClipboard)};
  return {say(words::clipboard), fine,
          say(facts.clipboardManager ? words::clipboardKept : words::clipboardReached)};
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
