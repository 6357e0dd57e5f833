#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "commands/Diagnosis.h"
#include "platform/Audio.h"
#include "platform/Speech.h"

namespace tavelo {

/// What the user has set the Globe key to do when it is pressed, with the raw values of the setting.
enum class GlobeKeyUsage : std::int32_t { nothing = 0, changeInputSource = 1, showEmoji = 2, dictation = 3 };

/// What was found of the services that a Mac provides to a process. A plain value.
struct MacFacts {
  bool accessibilityTrusted = false;
  /// Whether the process may watch the keyboard, which macOS grants apart from accessibility.
  bool listenEventAccess = false;
  /// Whether the process's event tap is switched on; absent if it has none.
  std::optional<bool> tapEnabled;
  /// Whether global monitors could be installed.
  bool monitors = false;
  /// Whether some application hides the keyboard from every other one now.
  bool secureInput = false;
  /// Absent if the user never set it; then the key does what this Mac's keyboard brings along.
  std::optional<GlobeKeyUsage> globeKey;

  platform::CaptureAuthorizationStatus microphone = platform::CaptureAuthorizationStatus::notDetermined;
  bool hasSoundInput = false;
  platform::SpeechAuthorizationStatus speech = platform::SpeechAuthorizationStatus::notDetermined;
  /// Whether macOS recognises Vietnamese, and whether it could do so now.
  bool hasRecognizer = false;
  bool recognizerIsAvailable = false;

  std::string cacheFolder;
  /// Why nothing can be written there; empty if something can.
  std::string cacheFolderError;
};

/// Examines this process on this Mac, with the current platform. Shows nothing and records nothing. Main
/// thread; only in a build for a Mac.
MacFacts examineMac();

/// One finding for each service, always the same services in the same order.
std::vector<Finding> diagnose(const MacFacts& facts);

}  // namespace tavelo
