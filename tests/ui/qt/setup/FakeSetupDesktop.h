#pragma once

#include <string>
#include <vector>

#include "ui/qt/setup/SetupDesktop.h"

namespace tavelo {

/// A desktop for the set-up window, with everything in variables.
struct FakeSetupDesktop {
  FakeSetupDesktop() {
    functions.variable = [this](auto) { return variable; };
    functions.listSoundSources = [this](auto answer) { answer(sources); };
    functions.microphone = [this] { return microphone; };
    functions.chooseMicrophone = [this](const std::string& name) { return save(microphone, name); };
    functions.recognizer = [this](bool anew) {
      loads += anew ? 1 : 0;
      return recognizer;
    };
    functions.chooseInstalledModel = [this] { return problem; };
    functions.chooseServer = [this](const std::string& address) {
      recognizer = {RecognizerCondition::State::server, address};
      return problem;
    };
    functions.tryServer = [this](const std::string& address, auto done) {
      trials.push_back({address, done});
    };
    functions.canWatchKeys = true;
    functions.holdKeyName = [this] { return holdKey; };
    functions.keyFacts = [this](std::int64_t) { return key; };
    functions.chooseHoldKey = [this](const std::string& setting) { return save(holdKey, setting); };
    functions.accessibility = [this] { return accessibility; };
    functions.enableAccessibility = [this] { accessibility = AccessibilityCondition::on; };
    functions.unreachableApplications = [] { return std::vector<std::string>{}; };
    functions.startsWithSession = [this] { return startsWithSession; };
    functions.startWithSession = [this](bool on) {
      startsWithSession = on;
      return std::string();
    };
    functions.notify = [](const std::string&, const std::string&) {};
  }

  std::string save(std::string& setting, const std::string& value) {
    if (problem.empty()) setting = value;
    return problem;
  }

  struct Trial {
    std::string address;
    std::function<void(const std::string& failure)> done;
  };

  SetupDesktop functions;
  std::string variable;
  /// Why nothing can be saved.
  std::string problem;
  SoundSourceList sources{.sources = {{"usb", "Tai nghe USB", true}}, .error = {}};
  std::string microphone;
  RecognizerCondition recognizer;
  int loads = 0;
  std::vector<Trial> trials;
  std::string holdKey = "Ctrl phải";
  platform::KeyFacts key;
  AccessibilityCondition accessibility = AccessibilityCondition::off;
  bool startsWithSession = false;
};

}  // namespace tavelo
