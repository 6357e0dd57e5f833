#pragma once

#include <string>
#include <vector>

#include "commands/Diagnosis.h"

namespace tavelo {

/// What was found of the services that every Linux desktop has, whatever its display server. A plain value.
struct LinuxFacts {
  /// Whether the accessibility bus answers.
  bool accessibilityBus = false;
  /// Whether applications have been asked to be accessible.
  bool accessibilityEnabled = false;

  /// Whether something shows status items.
  bool statusArea = false;

  /// Why no microphone can be opened, in the words that the user is told; empty if one can.
  std::string microphoneError;
  /// The source that the settings name, and the one that opens; empty if there is none.
  std::string microphoneAsked;
  std::string microphone;
  /// Where the choice of the microphone comes from; see `origin` in Diagnosis.h.
  std::string microphoneOrigin;
  /// A command that starts the sound server; empty if it runs.
  std::string soundServerStart;

  /// What recognises, and where: one clause.
  std::string recognizer;
  /// Where the choice of the recogniser comes from.
  std::string recognizerOrigin;
  /// The engine and its version, if known.
  std::string recognizerEngine;
  /// When and why it last failed, in the running program or elsewhere; empty if unknown.
  std::string recognizerLastFailure;
  /// Whether anything is configured that recognises Vietnamese.
  bool recognizerIsConfigured = false;
  /// Why recognition does not work; empty if it does.
  std::string recognizerError;
  /// Whether the model is not loaded yet, so that nobody knows.
  bool recognizerIsLoading = false;
  /// Whether a setting names the server or the model, so that a model that `get-model` installs would not be
  /// used.
  bool recognizerIsNamed = false;

  /// Whether a program runs that was upgraded since it was started.
  bool olderProgramRuns = false;

  /// The settings file, and why all or a part of it is not used; empty if all of it is.
  std::string settingsFile;
  std::string settingsError;

  /// Where the history is kept.
  std::string cacheFolder;
  /// Why nothing can be written there; empty if something can.
  std::string cacheFolderError;
};

std::vector<Finding> diagnose(const LinuxFacts& facts, const DisplayServerFindings& displayServer);

}  // namespace tavelo
