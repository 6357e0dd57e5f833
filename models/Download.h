#pragma once

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "models/HeldReply.h"

class QNetworkAccessManager;

namespace tavelo::models {

/// Fetches one file over HTTP into a part file. What an earlier run left of the part is resumed. A connection
/// that breaks is taken up again, five times without progress at most.
///
/// Main thread, with an application object; all callbacks come from its event loop.
class Download final {
 public:
  /// `network` must outlive this object.
  Download(QNetworkAccessManager& network, QUrl url, std::filesystem::path part);
  ~Download();
  Download(const Download&) = delete;
  Download& operator=(const Download&) = delete;

  struct Failure {
    /// One clause, such as "the server answered 404".
    std::string reason;
    /// Whether this machine is to blame (no space, a folder that cannot be written to), not the publisher.
    bool isLocal = false;
  };

  /// Bytes in the part, and how many there will be; absent if the server does not say.
  std::function<void(std::int64_t received, std::optional<std::int64_t> total)> onProgress;
  /// The end; absent on success. The callback may destroy this object.
  std::function<void(const std::optional<Failure>&)> onFinished;

  void start();
  /// Closes the connection and keeps the part. Does nothing after the end.
  void pause();
  /// Goes on after a `pause`.
  void resume();

  /// Whether the part began in an earlier run, so that it may belong to another file.
  bool isResumed() const { return isResumed_; }

 private:
  void attempt();
  void drop();
  void readHeaders();
  void readBody();
  void finishAttempt();
  bool openPart();
  bool begin();
  void fail(std::string reason, bool isLocal = false);
  void finish(const std::optional<Failure>& failure);
  std::string spaceProblem(std::int64_t missing) const;

  QNetworkAccessManager& network_;
  const QUrl url_;
  const std::filesystem::path part_;
  /// Receives the signals, so that none arrives after this object is gone.
  QObject context_;
  QTimer nextAttempt_;
  HeldReply reply_{nullptr, DropReply{&context_}};
  int file_ = -1;
  /// Bytes in the part.
  std::int64_t received_ = 0;
  /// The same when the attempt began.
  std::int64_t before_ = 0;
  std::optional<std::int64_t> total_;
  /// Whether the body of this answer belongs into the part.
  bool isBody_ = false;
  bool isResumed_ = false;
  bool isRunning_ = false;
  bool hasBegun_ = false;
  int failures_ = 0;
};

}  // namespace tavelo::models
