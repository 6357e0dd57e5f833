#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
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
/// `SingleInstance`. Empty if there is none, and in a build without a desktop.
std::filesystem::path instanceFolder();

/// Starts the program again in this process, from the file that now has its place. Throws a `CommandFailure`
/// if that fails; otherwise it does not return. Only on a Linux desktop.
[[noreturn]] void startInThisProcess();

/// The commands that need a desktop.
struct DesktopCommands {
  /// A command of this desktop alone, without options.
  struct Other {
    const char* name;
    std::string description;
    ExitCode (*run)();
  };

  ExitCode (*start)();
  ExitCode (*insertLast)();
  ExitCode (*listen)(const ListenOptions& options);
  ExitCode (*doctor)(const DoctorOptions& options);
  /// Null if the desktop has no such command.
  ExitCode (*autostart)(const AutostartOptions& options) = nullptr;
  std::vector<Other> others;
};

/// Absent in a build without a desktop.
std::optional<DesktopCommands> desktopCommands();

}  // namespace tavelo
