#pragma once

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"

namespace tavelo::linuxdesktop {

/// Asks the sound server for its microphones, on a thread of its own. Main thread.
class SoundSources final {
 public:
  struct Source {
    /// The server's name, for settings.
    std::string name;
    /// For people, in the language of the sound server.
    std::string description;
    bool isDefault = false;
  };
  /// What there is to record from, without the recordings of what loudspeakers play. `error`, in Vietnamese,
  /// if the server cannot be asked.
  struct Answer {
    std::vector<Source> sources;
    std::string error;
  };

  /// `mainQueue` must outlive this object.
  explicit SoundSources(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}
  /// Waits for a question that is still open, 2 s at most.
  ~SoundSources();
  SoundSources(const SoundSources&) = delete;
  SoundSources& operator=(const SoundSources&) = delete;

  /// Calls `answer` once, on the main queue, within about 2 s. Does nothing while a question is open.
  void ask(std::function<void(const Answer&)> answer);

 private:
  platform::MainQueue& mainQueue_;
  std::thread thread_;
  platform::Lifetime lifetime_;
};

}  // namespace tavelo::linuxdesktop
