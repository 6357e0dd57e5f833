#pragma once

#include <memory>
#include <string>

namespace tavelo {

/// The platform of a desktop, put together of its backends: the current one for as long as this object lives.
/// Main thread, with an application object.
class LinuxWiring final {
 public:
  LinuxWiring();
  ~LinuxWiring();
  LinuxWiring(const LinuxWiring&) = delete;
  LinuxWiring& operator=(const LinuxWiring&) = delete;

  /// Begins to load what recognition in the locale needs, in the background.
  void preloadSpeech(const std::string& localeIdentifier);

  /// Tells the user in a notification when the program cannot work in this kind of session.
  void announceUnsuitableSession();

 private:
  struct Backends;
  std::unique_ptr<Backends> backends_;
};

}  // namespace tavelo
