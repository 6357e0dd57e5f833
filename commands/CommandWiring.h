#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "app/SpeechWiring.h"
#include "commands/Commands.h"
#include "platform/FileManager.h"
#include "platform/MainQueue.h"

/// What the commands get from the build. Defined in CoreCommandWiring.cpp for a build without a desktop, in
/// DesktopCommandWiring.cpp for one with a desktop. No platform needs to be installed. Main thread.
namespace tavelo {

/// The user's files.
std::unique_ptr<platform::FileManager> makeCommandFileManager();

/// The configured speech recognition. It delivers on `mainQueue`, which must outlive it.
ConfiguredSpeech makeCommandSpeech(platform::MainQueue& mainQueue);

/// The folder of the user's own in which the running program has its lock and its socket; see
/// `SingleInstance`. Empty if there is none. Only in a build with a desktop.
std::filesystem::path instanceFolder();

/// The commands that need a desktop.
struct DesktopCommands {
  /// A command of this desktop alone, without options.
  struct Other {
    const char* name;
    const char* description;
    ExitCode (*run)();
  };

  ExitCode (*start)();
  ExitCode (*insertLast)();
  ExitCode (*listen)(const ListenOptions& options);
  ExitCode (*doctor)();
  /// Null if the desktop has no such command.
  ExitCode (*autostart)(const AutostartOptions& options) = nullptr;
  std::vector<Other> others;
};

/// Absent in a build without a desktop.
std::optional<DesktopCommands> desktopCommands();

}  // namespace tavelo
