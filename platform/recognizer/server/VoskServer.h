#pragma once

#include <QThread>
#include <QUrl>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/recognizer/Outcome.h"
#include "platform/recognizer/RecognitionTask.h"

namespace tavelo::recognizer {

class VoskServerConnection;

/// The address of a server: `ws://host[:port]` or `wss://host[:port]`, with a path if the server
/// wants one. A plain value.
struct VoskServerAddress {
  /// Absent when the text is not such an address.
  std::optional<QUrl> url;
  /// Why it is not, in English, for the user to read; empty otherwise.
  std::string failure;

  /// The default port is 2700, as the servers' own, or 443 for wss.
  static VoskServerAddress parse(const std::string& text);
};

/// The server at one address, and the thread that talks to it, which sleeps while there is nothing to do.
/// Needs an application object, but not its event loop. Main thread.
class VoskServer final {
 public:
  /// An attempt to connect. After `stop` there is no connection, and the outcome is a failure.
  struct Attempt {
    /// Releasing it closes the connection. Never release it while the server's thread ends.
    std::shared_ptr<VoskServerConnection> connection;
    std::shared_ptr<const Outcome> outcome;
  };

  explicit VoskServer(QUrl address);

  /// Like `stop`.
  ~VoskServer();

  VoskServer(const VoskServer&) = delete;
  VoskServer& operator=(const VoskServer&) = delete;

  /// Begins to connect.
  Attempt connect();

  /// Has the server recognise what `request` carries and report to `task`, which is kept until it is over.
  /// Does nothing after `stop`.
  void recognize(Attempt attempt, std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request);

  /// Closes every connection and ends the thread. Nothing is reported afterwards.
  void stop();

 private:
  const QUrl address_;
  std::vector<std::shared_ptr<RecognitionTask>> tasks_;
  bool stopped_ = false;
  QThread thread_;
};

}  // namespace tavelo::recognizer
