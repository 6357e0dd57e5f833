#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/KeyFacts.h"

namespace tavelo {

/// A microphone that the sound server offers.
struct SoundSource {
  /// The server's name, for the settings.
  std::string name;
  /// For people.
  std::string description;
  bool isDefault = false;

  bool operator==(const SoundSource&) const = default;
};

struct SoundSourceList {
  std::vector<SoundSource> sources;
  /// In Vietnamese; empty if the server answered.
  std::string error;
};

/// What has become of the configured recogniser.
struct RecognizerCondition {
  enum class State : std::uint8_t {
    /// There is no model.
    missing,
    loading,
    ready,
    failed,
    /// A server is configured; only a trial tells whether it answers.
    server,
  };
  State state = State::missing;
  /// Why it failed, or the server's address.
  std::string detail;
};

enum class AccessibilityCondition : std::uint8_t { noBus, off, on };

/// What the set-up window needs of the desktop and of the program around it. A wiring fills in every
/// function. Main thread; all of them return at once or within the bounds of accessibility.
///
/// Those that change a setting write it and return one clause why they could not; empty on success. The
/// running program has taken the new value up when they return.
struct SetupDesktop {
  enum class Choice : std::uint8_t { microphone, recognizer, holdKey };
  /// The variable of the environment that decides in place of the settings; empty if none does.
  std::function<std::string(Choice)> variable;

  /// Answers later, or not at all if it was asked before and has not answered yet.
  std::function<void(std::function<void(const SoundSourceList&)>)> listSoundSources;
  /// The chosen source; empty for the system's default.
  std::function<std::string()> microphone;
  std::function<std::string(const std::string& name)> chooseMicrophone;

  /// With `anew`, begins to load the model, if it is not loaded; otherwise tells what became of that.
  std::function<RecognizerCondition(bool anew)> recognizer;
  /// Recognises from now on with the installed model, not by a server or another model.
  std::function<std::string()> chooseInstalledModel;
  std::function<std::string(const std::string& address)> chooseServer;
  /// Calls `done` once, within some seconds; with a reason if the server does not answer as one.
  std::function<void(const std::string& address, std::function<void(const std::string& failure)> done)>
      tryServer;
  /// The user's folder for data, in which models are installed; absent without a home.
  std::optional<std::filesystem::path> dataHome;
  /// Mirrors that are configured; empty for the publishers.
  std::string modelsUrl;
  std::string libraryUrl;

  bool canWatchKeys = false;
  /// What the hold key is called now.
  std::function<std::string()> holdKeyName;
  std::function<platform::KeyFacts(std::int64_t keyCode)> keyFacts;
  std::function<std::string(const std::string& setting)> chooseHoldKey;

  std::function<AccessibilityCondition()> accessibility;
  std::function<void()> enableAccessibility;
  /// The names of running applications that accessibility does not reach.
  std::function<std::vector<std::string>()> unreachableApplications;

  std::function<bool()> startsWithSession;
  std::function<std::string(bool)> startWithSession;
  /// Tells the user something while the window is closed.
  std::function<void(const std::string& title, const std::string& body)> notify;
};

}  // namespace tavelo
