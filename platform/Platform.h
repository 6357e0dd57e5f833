#pragma once

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

/// Everything the program can reach of the world; a backend fills it in. The references outlive the
/// installation.
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
};

/// The platform of this process. A program error, which stops the program, when none is installed.
const Platform& current();

/// Makes `platform` the current one for as long as this object lives. One at a time; main thread. What was
/// made on a platform must be gone before its installation ends.
class Installation final {
 public:
  explicit Installation(const Platform& platform);
  ~Installation();
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;
};

}  // namespace tavelo::platform
