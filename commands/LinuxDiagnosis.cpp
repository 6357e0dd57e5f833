#include "commands/LinuxDiagnosis.h"

#include "commands/InputOutput.h"

namespace tavelo {
namespace {

using enum Verdict;

Finding accessibilityBus(const LinuxFacts& facts) {
  if (facts.accessibilityBus) return {"accessibility bus", fine, "answers"};
  return {"accessibility bus", limited,
          "does not answer, so text goes in by pasting only: install at-spi2-core and log in again"};
}

Finding accessibilitySwitch(const LinuxFacts& facts) {
  if (facts.accessibilityEnabled) return {"accessibility", fine, "on"};
  if (!facts.accessibilityBus) return {"accessibility", limited, "off while the bus does not answer"};
  return {"accessibility", limited,
          "off: choose “Cấp quyền...” in Tavelo's menu, then restart your applications"};
}

Finding statusArea(const LinuxFacts& facts) {
  if (facts.statusArea) return {"status area", fine, "shows the menu"};
  return {"status area", limited,
          "none: run “tavelo” once more to open the menu; on GNOME, the AppIndicator extension brings one"};
}

Finding soundInput(const LinuxFacts& facts) {
  const std::string source = onOneLine(facts.microphone) + " opens";
  if (facts.microphoneError.empty() && facts.microphoneAsked != facts.microphone &&
      !facts.microphoneAsked.empty())
    return {"sound input", limited,
            "there is no source “" + onOneLine(facts.microphoneAsked) + "” (" + facts.microphoneOrigin +
                "), so " + source + "; “pactl list short sources” prints their names"};
  if (facts.microphoneError.empty())
    return {"sound input", fine, source + " (" + facts.microphoneOrigin + ")"};
  return {"sound input", broken,
          "“" + onOneLine(facts.microphoneError) +
              "”: plug a microphone in, choose it in the sound settings, and see that the "
              "sound server (PulseAudio or PipeWire) runs"};
}

Finding recognizer(const LinuxFacts& facts) {
  const std::string error = onOneLine(facts.recognizerError);
  if (!facts.recognizerIsConfigured) {
    return {"recogniser", broken,
            "none" + (error.empty() ? "" : " (" + error + ")") +
                ": run “tavelo get-model”, or set TAVELO_RECOGNIZER to the address "
                "of a Vosk server, such as ws://host:2700"};
  }
  const std::string name = onOneLine(facts.recognizer);
  if (error.empty()) {
    const std::string engine = onOneLine(facts.recognizerEngine);
    const std::string failure = onOneLine(facts.recognizerLastFailure);
    return {"recogniser", fine,
            (engine.empty() ? "" : engine + " ") + name + " (" + facts.recognizerOrigin + ")" +
                (failure.empty() ? "" : "; it works now, but failed " + failure)};
  }
  return {"recogniser", broken,
          name + " (" + facts.recognizerOrigin + "): " + error + "; start it, or correct what names it"};
}

}  // namespace

std::vector<Finding> diagnose(const LinuxFacts& facts, const DisplayServerFindings& displayServer) {
  std::vector<Finding> findings{displayServer.display,
                                displayServer.rawKeys,
                                displayServer.holdKey,
                                accessibilityBus(facts),
                                accessibilitySwitch(facts),
                                displayServer.windowManager,
                                statusArea(facts),
                                displayServer.clipboard,
                                soundInput(facts),
                                recognizer(facts),
                                historyFolder(facts.cacheFolder, facts.cacheFolderError)};
  if (!facts.settingsError.empty())
    findings.push_back({"settings", limited,
                        onOneLine(facts.settingsFile) + ": " + onOneLine(facts.settingsError) +
                            "; correct it, or remove it"});
  return findings;
}

}  // namespace tavelo
