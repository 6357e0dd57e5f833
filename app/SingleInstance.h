#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/MainQueue.h"

namespace tavelo {

/// What another start of the program, or a command, may ask the running one to do.
enum class InstanceMessage : std::uint8_t {
  showMenu,
  insertLastText,
  startListening,
  stopListening,
  toggleListening,
  cancelListening,
  setUp,
  /// To say in words what it finds of the services that it needs. On Linux, only of its own file.
  examine,
  /// To forget dictations. Its argument says how many of the newest, or "all"; the answer's words are how
  /// many that were, or empty if it failed.
  forgetHistory,
  /// To start again, once no dictation is under way. On Linux.
  restart,
};

/// The answer to `examine` of a program whose file was replaced.
inline constexpr const char* replacedProgram = "replaced";

/// How the running program reacted to a message.
enum class InstanceAnswer : std::uint8_t {
  /// It accepted the message.
  taken,
  /// No program is running, or it does not listen yet.
  nobody,
  /// Something listens, but did not answer in time, or not as the program would.
  silent,
};

/// An answer and the words that came with it; most messages are answered without words.
struct InstanceReply {
  InstanceAnswer answer = InstanceAnswer::silent;
  std::string words;
};

/// Makes sure that a user runs the program once, and carries messages to the running one.
///
/// It uses two files in a folder of the user's own. A lock says which process is the one; the system releases
/// it however that process ends. A socket, which only the user may open, carries one line to the running
/// program per message, and its answer back. Main thread.
class SingleInstance final {
 public:
  /// Touches no file yet. Each side waits for the other for its `patience`, then gives up. An empty `folder`
  /// means that there is none.
  explicit SingleInstance(const std::filesystem::path& folder,
                          std::chrono::milliseconds patience = std::chrono::seconds(2));
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Makes this process the one, for as long as this object lives. False if another process already is, and
  /// then `errorText` is empty. False with `errorText` if the folder is unusable or others may write to it.
  bool claim();
  /// Why `claim` or `listen` failed, in the current language; empty if neither did.
  const std::string& errorText() const { return errorText_; }

  /// Takes a message and returns the words of the answer. Called on the main queue; it must return at once,
  /// because the sender waits for it.
  /// The argument is empty for a message without one.
  using Received = std::function<std::string(InstanceMessage message, const std::string& argument)>;

  /// Receives messages for as long as the result lives, and replaces a socket that a killed program left
  /// behind. Null, with `errorText`, if the socket cannot be made. Call it only after `claim` succeeded.
  /// `mainQueue` must outlive the result, and so must this object, whose lock protects the socket.
  std::shared_ptr<const void> listen(platform::MainQueue& mainQueue, Received received);

  /// Sends a message to the running program and waits for the answer, for `patience` at most. With
  /// `waitsForStart`, it also waits that long for a program that does not listen yet. `argument` is one word;
  /// an older program does not know a message with one, and leaves it without an answer.
  InstanceReply send(InstanceMessage message, bool waitsForStart, const std::string& argument = {}) const;

 private:
  struct Files;

  std::chrono::milliseconds patience_;
  std::string errorText_;
  std::unique_ptr<Files> files_;
};

}  // namespace tavelo
