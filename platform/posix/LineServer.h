#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/MainQueue.h"

namespace tavelo::posix {

/// Answers lines that other processes of the user send to a socket in the file system.
///
/// A thread of its own serves the connections and sleeps while there are none, so that a peer that hangs
/// never holds up the main thread. Each line is answered on the main thread: one that hangs does not answer.
/// Main thread.
class LineServer final {
 public:
  /// Connections served at a time. Any more are closed.
  static constexpr std::size_t mostPeers = 8;

  /// Takes a line without its line feed and returns the whole answer; absent, if the line means nothing, and
  /// the connection is closed. Called on the main queue; the sender waits for it.
  using Handler = std::function<std::optional<std::string>(const std::string& line)>;

  /// Listens on `path`, in place of what is there: only the holder of a lock may do that. The user alone can
  /// connect. A peer that does not send its line or take its answer within `patience` is dropped. Null if the
  /// socket cannot be made, with the reason in `errorText`. `mainQueue` must outlive the server.
  static std::unique_ptr<LineServer> listen(const std::string& path, std::chrono::milliseconds patience,
                                            platform::MainQueue& mainQueue, Handler handler,
                                            std::string& errorText);

  /// Closes every connection and removes the socket. `handler` is not called afterwards.
  ~LineServer();
  LineServer(const LineServer&) = delete;
  LineServer& operator=(const LineServer&) = delete;

 private:
  class Connections;
  LineServer(std::string path, std::shared_ptr<Connections> connections);

  std::string path_;
  std::shared_ptr<Connections> connections_;
  std::thread thread_;
};

}  // namespace tavelo::posix
