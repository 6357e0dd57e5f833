#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ProgramFile.h"

namespace tavelo {

/// Puts the platform of a Linux desktop together from its backends, and is the current platform for as long
/// as it lives. Main thread, with an application object.
class LinuxWiring final {
 public:
  LinuxWiring();
  ~LinuxWiring();
  LinuxWiring(const LinuxWiring&) = delete;
  LinuxWiring& operator=(const LinuxWiring&) = delete;

  /// Starts loading what recognition in the locale needs, in the background.
  void preloadSpeech(const std::string& localeIdentifier);

  /// Whether there is no recogniser, and nobody has configured one: dictation cannot work before the set-up.
  bool lacksRecognizer() const;

  /// Opens the set-up window, or brings it to the front.
  void showSetup();

  /// Tells the user in a notification if the program cannot work in this kind of session.
  void announceUnsuitableSession();

  /// What became of the program's file.
  platform::ProgramFile programFile() const;
  /// `changed` is called when something changed where the file is.
  void watchProgramFile(std::function<void()> changed);
  /// Tells the user of an upgrade; `restart` is called if they want the new program at once.
  void offerRestart(std::function<void()> restart);
  void tellRemoved();

 private:
  struct Backends;
  std::unique_ptr<Backends> backends_;
};

}  // namespace tavelo
