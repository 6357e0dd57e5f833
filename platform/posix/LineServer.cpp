#include "platform/posix/LineServer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/LocalSocket.h"

namespace tavelo::posix {
namespace {

using SteadyTime = std::chrono::steady_clock::time_point;

/// One connection, from its line to the last byte of its answer.
struct Peer {
  std::uint64_t number = 0;
  FileDescriptor socket;
  SteadyTime deadline;
  std::string line;
  /// Whether the line has gone to the main thread. What comes after it is not read.
  bool hasAsked = false;
  std::string answer;
};

struct Answer {
  std::uint64_t number = 0;
  std::optional<std::string> text;
};

/// Whether a read or write on a socket failed for good, rather than for now.
bool failed(ssize_t count) { return count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR; }

/// Listens on `path`; no descriptor, and `errorText`, if that fails.
FileDescriptor listeningSocket(const std::string& path, std::string& errorText) {
  const auto address = localAddress(path);
  if (!address) {
    errorText = language::say(language::words::pathTooLong, {path});
    return FileDescriptor();
  }
  ::unlink(path.c_str());
  FileDescriptor socket = localSocket();
  // Nobody can connect before `listen`, so the mode is in time.
  if (socket && ::bind(socket.get(), generic(*address), sizeof *address) == 0 &&
      ::chmod(path.c_str(), S_IRUSR | S_IWUSR) == 0 && ::listen(socket.get(), SOMAXCONN) == 0) {
    return socket;
  }
  errorText = path + ": " + language::systemError(errno);
  return FileDescriptor();
}

}  // namespace

/// The work of the thread. The main thread holds it too, and hands answers over.
class LineServer::Connections final : public std::enable_shared_from_this<Connections> {
 public:
  Connections(FileDescriptor listening, std::chrono::milliseconds patience, platform::MainQueue& mainQueue,
              Handler handler)
      : listening_(std::move(listening)),
        patience_(patience),
        mainQueue_(mainQueue),
        handler_(std::move(handler)) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) != 0) return;
    wakeReader_ = unwaiting(ends[0]);
    wakeWriter_ = unwaiting(ends[1]);
  }

  bool canRun() const { return bool(wakeReader_); }

  /// The thread. Returns after `end`.
  void run() {
    while (waitForSomething()) {
      sendAnswers();
      const auto now = std::chrono::steady_clock::now();
      std::erase_if(peers_, [&](Peer& peer) { return !serve(peer, now); });
      acceptPeers(now);
    }
  }

  /// Any thread.
  void end() {
    hasEnded_ = true;
    wake();
  }

 private:
  void wake() const {
    const char something = 0;
    // If the pipe is full, the thread wakes up anyway.
    [[maybe_unused]] const auto written = ::write(wakeWriter_.get(), &something, sizeof something);
  }

  /// Sleeps until a socket is ready, an answer has come or a peer's time is up. False at the end.
  bool waitForSomething() {
    std::vector<pollfd> waits{{wakeReader_.get(), POLLIN, 0}, {listening_.get(), POLLIN, 0}};
    auto next = SteadyTime::max();
    for (const auto& peer : peers_) {
      const short events = !peer.hasAsked ? POLLIN : peer.answer.empty() ? short{0} : POLLOUT;
      waits.push_back({peer.socket.get(), events, 0});
      next = std::min(next, peer.deadline);
    }
    int limit = -1;
    if (next != SteadyTime::max()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - std::chrono::steady_clock::now());
      limit = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, std::numeric_limits<int>::max()));
    }
    ::poll(waits.data(), static_cast<nfds_t>(waits.size()), limit);
    std::array<char, 64> ignored{};
    while (::read(wakeReader_.get(), ignored.data(), ignored.size()) > 0) {
    }
    return !hasEnded_;
  }

  void acceptPeers(SteadyTime now) {
    while (FileDescriptor socket = unwaiting(::accept(listening_.get(), nullptr, nullptr))) {
      if (peers_.size() == mostPeers) continue;
      auto& peer = peers_.emplace_back();
      peer.number = nextNumber_++;
      peer.socket = std::move(socket);
      peer.deadline = now + patience_;
    }
  }

  /// Goes on with a peer as far as it can now. False when the peer is done with, or to be dropped.
  bool serve(Peer& peer, SteadyTime now) {
    if (now >= peer.deadline) return false;
    if (!peer.hasAsked) return read(peer);
    if (peer.answer.empty()) return true;
    const auto sent = sendQuietly(peer.socket, peer.answer);
    if (failed(sent)) return false;
    if (sent > 0) peer.answer.erase(0, static_cast<std::size_t>(sent));
    if (!peer.answer.empty()) return true;
    // A child process may hold the connection open; the peer waits for its end.
    ::shutdown(peer.socket.get(), SHUT_RDWR);
    return false;
  }

  bool read(Peer& peer) {
    std::array<char, longestLine> piece{};
    const auto count = ::recv(peer.socket.get(), piece.data(), piece.size(), 0);
    if (count == 0 || failed(count)) return false;
    if (count < 0) return true;
    peer.line.append(piece.data(), static_cast<std::size_t>(count));
    const auto end = peer.line.find('\n');
    if (end == std::string::npos) return peer.line.size() < longestLine;
    peer.line.resize(end);
    peer.hasAsked = true;
    // Who asked while this program was stopped, and has given up, was told that nothing happened.
    char more = 0;
    if (::recv(peer.socket.get(), &more, 1, MSG_PEEK) == 0) return false;
    mainQueue_.async([weak = weak_from_this(), number = peer.number, line = peer.line] {
      if (const auto self = weak.lock()) self->answer(number, line);
    });
    return true;
  }

  /// Main thread.
  void answer(std::uint64_t number, const std::string& line) {
    auto text = handler_(line);
    {
      const std::lock_guard lock(mutex_);
      answers_.push_back({number, std::move(text)});
    }
    wake();
  }

  void sendAnswers() {
    std::vector<Answer> answers;
    {
      const std::lock_guard lock(mutex_);
      answers.swap(answers_);
    }
    for (auto& each : answers) {
      const auto peer = std::ranges::find(peers_, each.number, &Peer::number);
      if (peer == peers_.end()) continue;
      if (each.text && !each.text->empty()) {
        peer->answer = std::move(*each.text);
      } else {
        peers_.erase(peer);
      }
    }
  }

  FileDescriptor listening_;
  const std::chrono::milliseconds patience_;
  platform::MainQueue& mainQueue_;
  /// Main thread.
  const Handler handler_;
  FileDescriptor wakeReader_;
  FileDescriptor wakeWriter_;
  std::atomic<bool> hasEnded_ = false;
  /// The thread's own.
  std::vector<Peer> peers_;
  std::uint64_t nextNumber_ = 0;
  std::mutex mutex_;
  /// Guarded by the mutex.
  std::vector<Answer> answers_;
};

std::unique_ptr<LineServer> LineServer::listen(const std::string& path, std::chrono::milliseconds patience,
                                               platform::MainQueue& mainQueue, Handler handler,
                                               std::string& errorText) {
  auto listening = listeningSocket(path, errorText);
  if (!listening) return nullptr;
  auto connections =
      std::make_shared<Connections>(std::move(listening), patience, mainQueue, std::move(handler));
  if (!connections->canRun()) {
    errorText = path + ": " + language::systemError(errno);
    return nullptr;
  }
  return std::unique_ptr<LineServer>(new LineServer(path, std::move(connections)));
}

LineServer::LineServer(std::string path, std::shared_ptr<Connections> connections)
    : path_(std::move(path)),
      connections_(std::move(connections)),
      thread_([&running = *connections_] { running.run(); }) {}

LineServer::~LineServer() {
  connections_->end();
  thread_.join();
  ::unlink(path_.c_str());
}

}  // namespace tavelo::posix
