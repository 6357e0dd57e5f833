#pragma once

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>

#include <unistd.h>

#include "platform/MainQueue.h"

namespace tavelo {

/// Writes a line for the test: a word and, after a space, a text.
inline void tell(const std::string& event, const std::string& text = {}) {
  std::printf("%s\n", (text.empty() ? event : event + " " + text).c_str());
  std::fflush(stdout);
}

/// Reads commands from standard input, one per line: a name and, after a space, a text. Performs each in its
/// own turn of the main queue. Quits the application at the end of the input. Main thread.
class CommandReader final {
 public:
  using Perform = std::function<void(const std::string& name, const std::string& text)>;

  /// `mainQueue` must outlive this object.
  CommandReader(platform::MainQueue& mainQueue, Perform perform)
      : mainQueue_(mainQueue), perform_(std::move(perform)) {
    QObject::connect(&input_, &QSocketNotifier::activated, &input_, [this] { read(); });
  }

 private:
  void read() {
    char chunk[4096];
    const auto count = ::read(STDIN_FILENO, chunk, sizeof chunk);
    if (count <= 0) return QCoreApplication::quit();
    pending_.append(chunk, static_cast<std::size_t>(count));
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
      const std::string line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      const auto space = line.find(' ');
      const std::string text = space == std::string::npos ? "" : line.substr(space + 1);
      mainQueue_.async([this, name = line.substr(0, space), text] { perform_(name, text); });
    }
  }

  platform::MainQueue& mainQueue_;
  const Perform perform_;
  QSocketNotifier input_{STDIN_FILENO, QSocketNotifier::Read};
  std::string pending_;
};

}  // namespace tavelo
