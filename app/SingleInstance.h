#pragma once

#include <QFile>
#include <QLocalServer>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>

class QLocalSocket;

namespace tavelo {

/// What another start of the program may ask the running one to do.
enum class InstanceMessage : std::uint8_t { showMenu, insertLastText };

/// How the running program reacted to a message.
enum class InstanceAnswer : std::uint8_t {
  /// It accepted the message.
  taken,
  /// No program is running, or it does not listen yet.
  nobody,
  /// Something listens, but did not answer in time, or not as the program would.
  silent,
};

/// Makes sure that a user runs the program once, and carries messages to the running one.
///
/// It uses two files in the user's runtime folder. A lock says which process is the one; the system releases
/// it however that process ends. A socket, which only the user may open, carries one line each way per
/// message. Main thread.
class SingleInstance final {
 public:
  /// Connections served at a time. Any more are closed.
  static constexpr int mostPeers = 8;

  /// The user's runtime folder; empty if there is none.
  static QString runtimeFolder();

  /// Touches no file yet. Each side waits for the other for its `patience`, then gives up.
  explicit SingleInstance(const QString& folder = runtimeFolder(),
                          std::chrono::milliseconds patience = std::chrono::seconds(2));
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Makes this process the one, for as long as this object lives. False if another process already is, and
  /// then `errorText` is empty. False with `errorText` if the folder is unusable or others may write to it.
  /// Needs no application object.
  bool claim();
  /// Why `claim` or `listen` failed, in English; empty if neither did.
  const QString& errorText() const { return errorText_; }

  /// Starts receiving messages, and replaces a socket that a killed program left behind. `received` is called
  /// from the event loop and must return at once: the sender waits for it. False, with `errorText`, if the
  /// socket cannot be made. Call it only after `claim` succeeded; needs an application object.
  bool listen(std::function<void(InstanceMessage)> received);

  /// Sends a message to the running program and waits for the answer, for `patience` at most. With
  /// `waitsForStart`, it also waits that long for a program that does not listen yet. Needs an application
  /// object, but no event loop.
  InstanceAnswer send(InstanceMessage message, bool waitsForStart) const;

 private:
  void serve(QLocalSocket& peer);
  void read(QLocalSocket& peer);

  QString socketPath_;
  std::chrono::milliseconds patience_;
  QString errorText_;
  QFile lock_;
  std::function<void(InstanceMessage)> received_;
  QLocalServer server_;
};

}  // namespace tavelo
