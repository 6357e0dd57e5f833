#pragma once

#include "platform/Names.h"

namespace tavelo::platform {

class Accessibility;
class Audio;
class Clock;
class FileManager;
class KeyboardEvents;
class MainQueue;
class Pasteboard;
class Resources;
class Speech;
class UserNotifications;
class Workspace;

/// Everything that the program can use of the system. The operations bear macOS's names; docs/architecture.md
/// has a glossary. A backend fills in the references, which must outlive the installation.
struct Platform {
  MainQueue& mainQueue;
  Clock& clock;
  FileManager& fileManager;
  Workspace& workspace;
  Pasteboard& generalPasteboard;
  Accessibility& accessibility;
  KeyboardEvents& keyboardEvents;
  Speech& speech;
  Audio& audio;
  Resources& resources;
  UserNotifications& userNotifications;
  Names names{};
};

/// The platform installed in this process. Stops the program if none is installed.
const Platform& current();

/// Installs `platform` for as long as this object lives. One at a time; main thread. Everything made on the
/// platform must be destroyed before.
class Installation final {
 public:
  explicit Installation(const Platform& platform);
  ~Installation();
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;
};

}  // namespace tavelo::platform
