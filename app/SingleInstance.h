#pragma once

#include <QFile>
#include <QLocalServer>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>

class QLocalSocket;

namespace tavelo {

/// What a later start may ask of the program that runs.
enum class InstanceMessage : std::uint8_t { showMenu, insertLastText };

/// What came of a message.
enum class InstanceAnswer : std::uint8_t {
  /// The running program has taken it.
  taken,
  /// No program runs, or it does not listen yet.
  nobody,
  /// Something is there that does not answer in time, or not as the program would.
  silent,
};

/// The one running program of a user, and the way to it.
///
/// Two files in the user's own runtime folder: a lock, which the system lifts when its holder ends however it
/// ends, says who is the one; a socket, which nobody but the user may open, carries messages. One line each
/// way. Main thread.
class SingleInstance final {
 public:
  /// Connections served at a time; what comes beyond them is closed.
  static constexpr int mostPeers = 8;

  /// The runtime folder of this user; empty when there is none.
  static QString runtimeFolder();

  /// Touches nothing yet. Either side waits for the other as long as its `patience`, then gives up.
  explicit SingleInstance(const QString& folder = runtimeFolder(),
                          std::chrono::milliseconds patience = std::chrono::seconds(2));
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Becomes the one, for as long as this object lives. False when another process is, or when the folder
  /// is not the user's alone or does not let us; `errorText` then says so. Needs no application object.
  bool claim();
  /// Why `claim` or `listen` failed, in English; empty when nothing speaks against either.
  const QString& errorText() const { return errorText_; }

  /// Begins to take messages, in place of one who ended without clearing up. `received` is called from the
  /// event loop, and must return at once: until then the sender has no answer. False, with `errorText`, when
  /// the socket cannot be made. Only for the one; needs an application object.
  bool listen(std::function<void(InstanceMessage)> received);

  /// Sends a message to the running program; returns when its patience ends at the latest. With
  /// `waitsForStart` a program that does not listen yet is given as long. Needs an application object, but no
  /// event loop.
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
