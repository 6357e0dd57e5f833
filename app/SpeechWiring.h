#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/Speech.h"
#include "platform/UserNotifications.h"
#include "settings/Settings.h"

namespace tavelo {

/// The speech recognition that the user configured. Main thread.
struct ConfiguredSpeech {
  std::unique_ptr<platform::Speech> speech;
  /// What recognises, and where: one clause for the user.
  std::string description;
  /// Starts loading what the locale needs, in the background, so that the first dictation need not wait.
  std::function<void(const std::string& localeIdentifier)> preload;
  /// Begins to load what the locale needs. What it returns tells how that turned out, without waiting: absent
  /// while it is open, empty if it is loaded, else why it failed. Empty if nothing is to be loaded.
  using Load = std::function<std::optional<std::string>()>;
  std::function<Load(const std::string& localeIdentifier)> load;
  /// Has recognisers tell the user when a dictation ended before the engine was ready. `notifications` must
  /// outlive the speech and its tasks.
  std::function<void(platform::UserNotifications& notifications)> notifyThrough;
  /// Why a dictation in the locale cannot work, in the current language; empty if no reason is known. Waits
  /// at most `limit` for the model to load or the server to answer.
  std::function<std::string(const std::string& localeIdentifier, std::chrono::milliseconds limit)> failure;
  /// The engine for the locale and its version, if that is known once `failure` found nothing; else empty.
  std::function<std::string(const std::string& localeIdentifier)> engine;
  /// Whether the locale's model is still being loaded.
  std::function<bool(const std::string& localeIdentifier)> isLoading = [](const std::string&) {
    return false;
  };
  /// When and why recognition last failed, in this program or another; empty if that is long ago or unknown.
  std::function<std::string()> lastFailure;
};

/// Recognition by a recogniser process of ours, with the library and the model that are set or installed.
/// Every build has this. `mainQueue` must outlive the speech. `dataHome` is the user's data folder, if there
/// is one. The settings are read once.
ConfiguredSpeech makeSpeechByProcess(platform::MainQueue& mainQueue,
                                     const std::optional<std::filesystem::path>& dataHome,
                                     const settings::Settings& settings);

/// Recognition by the server that the settings name; without one, by a process of ours. Only a build with a
/// desktop has this. Speech goes only to a configured address, and never elsewhere when one is configured.
/// The parameters are as above.
ConfiguredSpeech makeConfiguredSpeech(platform::MainQueue& mainQueue,
                                      const std::optional<std::filesystem::path>& dataHome,
                                      const settings::Settings& settings);

/// The values of all settings that either of these reads.
std::vector<std::string> speechSettings(const settings::Settings& settings);

}  // namespace tavelo
