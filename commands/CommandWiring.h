#pragma once

#include <memory>
#include <optional>

#include "commands/Commands.h"
#include "platform/FileManager.h"
#include "platform/MainQueue.h"
#include "platform/Speech.h"

/// What the commands get from the build. Defined in CoreCommandWiring.cpp for a build without a desktop, in
/// DesktopCommandWiring.cpp for one with a desktop. No platform needs to be installed. Main thread.
namespace tavelo {

/// The user's files.
std::unique_ptr<platform::FileManager> makeCommandFileManager();

/// The configured speech recognition. It delivers on `mainQueue`, which must outlive it.
std::unique_ptr<platform::Speech> makeCommandSpeech(platform::MainQueue& mainQueue);

/// The commands that need a desktop.
struct DesktopCommands {
  ExitCode (*start)();
  ExitCode (*insertLast)();
  ExitCode (*doctor)();
};

/// Absent in a build without a desktop.
std::optional<DesktopCommands> desktopCommands();

}  // namespace tavelo
