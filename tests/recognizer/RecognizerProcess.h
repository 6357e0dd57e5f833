#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tavelo::recognition {

/// A running `tavelo-recognizer` and its pipes. Waits with a generous limit for everything; whatever is still
/// running at the end is killed.
class RecognizerProcess final {
 public:
  RecognizerProcess(const std::string& model, const std::string& library,
                    const std::map<std::string, std::string>& environment = {});
  ~RecognizerProcess();
  RecognizerProcess(const RecognizerProcess&) = delete;
  RecognizerProcess& operator=(const RecognizerProcess&) = delete;

  void send(char kind, const std::string& payload = {});
  void begin(std::uint32_t dictation, std::uint32_t sampleRate = 16000);

  /// The next line of its output; empty at the end of it.
  std::string line();
  /// The lines up to the first that contains `mark`, or to the end.
  std::vector<std::string> linesUntil(const std::string& mark);

  void closeInput();
  /// Waits for its end. Returns its exit status, or the negative number of the signal that ended it.
  int status();

 private:
  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string unread_;
};

}  // namespace tavelo::recognition
