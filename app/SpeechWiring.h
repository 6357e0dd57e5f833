#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/MainQueue.h"
#include "platform/Speech.h"

namespace tavelo {

/// The speech recognition that this user configured. Main thread.
struct ConfiguredSpeech {
  std::unique_ptr<platform::Speech> speech;
  /// What recognises, and where, in English: one clause for the user.
  std::string description;
  /// Begins to load what the locale needs, in the background, so that the first dictation need not wait.
  std::function<void(const std::string& localeIdentifier)> preload;
  /// Why a recogniser for the locale would not be available, as far as is known now, in English; empty when
  /// nothing speaks against it. A server is known after a recogniser was asked whether it is available.
  std::function<std::string(const std::string& localeIdentifier)> failure;
};

/// The server that `TAVELO_RECOGNIZER` names, where this build knows servers; otherwise the library and the
/// model that are set or installed. Speech never goes to an address that nobody configured, nor past one that
/// somebody did. `mainQueue` must outlive the speech; `dataHome` is the user's data folder, if there is one.
ConfiguredSpeech makeConfiguredSpeech(platform::MainQueue& mainQueue,
                                      const std::optional<std::filesystem::path>& dataHome);

/// The same without a server.
ConfiguredSpeech makeSpeechInProcess(platform::MainQueue& mainQueue,
                                     const std::optional<std::filesystem::path>& dataHome);

}  // namespace tavelo
