#pragma once

#include <memory>
#include <string>

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

 private:
  struct Backends;
  std::unique_ptr<Backends> backends_;
};

}  // namespace tavelo
