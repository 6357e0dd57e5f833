#include "platform/recognizer/server/VoskServerConnection.h"

#include <QWebSocket>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <utility>

#include "platform/recognizer/server/ConnectionError.h"
#include "recognizer/vosk/VoskReply.h"

namespace tavelo::recognizer {
namespace {

constexpr const char* connectionLost = "Mất kết nối với máy chủ nhận diện giọng nói.";
constexpr const char* serverIsSilent = "Máy chủ nhận diện giọng nói không trả lời.";
constexpr const char* notUnderstood = "Không hiểu được câu trả lời của máy chủ nhận diện giọng nói.";
constexpr const char* tooMuch = "Máy chủ nhận diện giọng nói gửi quá nhiều dữ liệu.";
constexpr const char* badSound = "Không gửi được loại âm thanh này đến máy chủ nhận diện giọng nói.";

constexpr std::chrono::seconds answerLimit{10};
/// From the last answer on. The server normally closes the connection right after it.
constexpr std::chrono::milliseconds closingLimit{500};

/// Byte for byte: with any other spacing the server closes the connection without a final answer.
const QString endMessage = R"({"eof" : 1})";
const QString configMessage = R"({"config" : {"sample_rate" : %1}})";

/// A lost connection is made again twice within this time.
constexpr std::chrono::seconds reconnectLimit{3};
constexpr int mostAttempts = 2;
constexpr std::chrono::milliseconds firstPause{300};
constexpr std::chrono::milliseconds secondPause{1700};

/// At most this much sound waits in the socket; the rest waits in the request, which is bounded.
constexpr qint64 socketBound = qint64{64} * 1024;
/// The normal frame. The server answers each frame, which costs it as much as decoding 0.1 s of sound.
constexpr double frameSeconds = 0.1;
/// A server that owes this many answers is slow and gets longer frames.
constexpr int slowServerOwes = 5;
constexpr double slowFrameSeconds = 0.5;
/// One that owes so many gets no more sound for now. It has less than what is kept for another one.
constexpr int mostOwed = 200;
/// Refuse sound below this rate: it cannot be speech.
constexpr double lowestRate = 1000;
/// The server closes the connection at 1 MiB.
constexpr qsizetype largestFrame = qsizetype{512} * 1024;
/// A real answer has a few thousand bytes. Reading one takes some twenty times its size.
constexpr quint64 largestReply = quint64{1024} * 1024;
/// Qt keeps a frame here until it is complete.
constexpr qint64 readBound = qint64{2} * largestReply;
/// An hour of speech has some 50 kB.
constexpr std::size_t longestTranscript = std::size_t{1024} * 1024;
/// A server may answer this many messages that need no answer. Some servers answer the first message.
constexpr int mostUnaskedAnswers = 48;
/// We never have this much to send, unless a server sends pings and does not read what Qt answers.
constexpr qint64 writeBound = qint64{4} * 1024 * 1024;
constexpr std::chrono::milliseconds writeCheckInterval{50};

qsizetype bytesOf(double seconds, double sampleRate) {
  return static_cast<qsizetype>(seconds * sampleRate) * qsizetype{sizeof(std::int16_t)};
}

}  // namespace

/// Wakes the connection from the capture thread. Safe when the connection is destroyed during the call.
class VoskServerConnection::Wake final {
 public:
  explicit Wake(VoskServerConnection& connection) : connection_(&connection) {}

  void call() {
    const std::lock_guard lock{mutex_};
    if (connection_ == nullptr || posted_) return;
    posted_ = true;
    QMetaObject::invokeMethod(
        connection_,
        [this, connection = connection_] {
          {
            const std::lock_guard called{mutex_};
            posted_ = false;
          }
          connection->pump();
        },
        Qt::QueuedConnection);
  }

  void end() {
    const std::lock_guard lock{mutex_};
    connection_ = nullptr;
  }

 private:
  std::mutex mutex_;
  VoskServerConnection* connection_;
  bool posted_ = false;
};

VoskServerConnection::VoskServerConnection(QUrl address, std::shared_ptr<Outcome> outcome)
    : address_(std::move(address)), outcome_(std::move(outcome)) {
  watchdog_.setSingleShot(true);
  watchdog_.callOnTimeout(this, [this] {
    if (endSent_ && owed_ <= 0) {
      disconnected();
    } else {
      outcome_->settle(Outcome::State::failed, silenceError());
      fail(serverIsSilent);
    }
  });
  writeCheck_.callOnTimeout(this, [this] {
    if (socket_->bytesToWrite() > writeBound) fail(tooMuch);
  });
}

VoskServerConnection::~VoskServerConnection() {
  if (wake_) wake_->end();
  if (request_) request_->onArrival({});
  if (socket_) socket_->disconnect(this);
}

void VoskServerConnection::open() {
  socket_ = std::make_unique<QWebSocket>();
  socket_->setMaxAllowedIncomingMessageSize(largestReply);
  socket_->setMaxAllowedIncomingFrameSize(largestReply);
  connect(socket_.get(), &QWebSocket::connected, this, [this] { connected(); });
  connect(socket_.get(), &QWebSocket::disconnected, this, [this] { disconnected(); });
  connect(socket_.get(), &QWebSocket::textMessageReceived, this,
          [this](const QString& reply) { receive(reply); });
  connect(socket_.get(), &QWebSocket::bytesWritten, this, [this] { pump(); });
  // Some errors while connecting do not lead to `disconnected`.
  connect(socket_.get(), QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error), this, [this] {
    if (!open_) disconnected();
  });
  if (!everOpen_) watch();
  socket_->open(address_);
  // Before `open` there is no buffer to bound.
  socket_->setReadBufferSize(readBound);
}

void VoskServerConnection::transcribe(std::shared_ptr<RecognitionTask> task,
                                      std::shared_ptr<platform::BufferedRecognitionRequest> request) {
  task_ = std::move(task);
  if (over_) return task_->fail(connectionLost);
  request_ = std::move(request);
  if (open_) watch();
  wake_ = std::make_shared<Wake>(*this);
  request_->onArrival([wake = wake_] { wake->call(); });
  pump();
}

void VoskServerConnection::connected() {
  open_ = everOpen_ = true;
  if (sampleRate_) socket_->sendTextMessage(configMessage.arg(std::lround(*sampleRate_)));
  writeCheck_.start(writeCheckInterval);
  watch();
  outcome_->settle(Outcome::State::succeeded);
  pump();
}

void VoskServerConnection::disconnected() {
  if (over_) return;
  if (!endSent_ || owed_ > 0) return lose();
  close();
  task_->reportFinal(transcript_.finalText());
}

/// Tries another connection, which gets the sound since the last finished utterance.
void VoskServerConnection::lose() {
  if (!request_ || !everOpen_ || attempts_ >= mostAttempts) return fail(connectionLost);
  open_ = false;
  writeCheck_.stop();
  socket_->disconnect(this);
  socket_->abort();
  frame_.prepend(kept_.take());
  transcript_.restart();
  owed_ = unasked_ = 0;
  endSent_ = false;
  if (attempts_ == 0) watchdog_.start(reconnectLimit);
  QTimer::singleShot(attempts_++ == 0 ? firstPause : secondPause, this, &VoskServerConnection::open);
}

void VoskServerConnection::receive(const QString& reply) {
  if (over_) return;
  if (owed_ <= 0 && ++unasked_ > mostUnaskedAnswers) return fail(tooMuch);
  if (!request_) return;
  const auto read = recognition::VoskReply::parseFromServer(reply.toStdString());
  if (!read) return fail(notUnderstood);
  kept_.answered();
  if (read->text && read->text->empty()) kept_.isSilent();
  if (read->text && !read->text->empty()) {
    kept_.utteranceEnded();
    attempts_ = 0;
  }
  if (read->text) transcript_.endUtterance(*read->text);
  if (read->partial) transcript_.setPartial(*read->partial);
  const auto transcript = transcript_.text();
  if (transcript.size() > longestTranscript) return fail(tooMuch);
  // Some servers answer messages that others don't. Never let the count of owed answers go negative before
  // the end is sent.
  if (endSent_ || owed_ > 0) --owed_;
  task_->reportPartial(transcript);
  if (endSent_ && owed_ <= 0) {
    // This may be the last answer; only the closing tells. Some servers close only when they receive more.
    if (owed_ == 0) socket_->sendTextMessage(endMessage);
    watchdog_.start(closingLimit);
    return;
  }
  watch();
  pump();
}

/// Sends as much waiting sound as the socket may hold and the server keeps up with.
void VoskServerConnection::pump() {
  while (open_ && !over_ && request_ && !endSent_ && owed_ < mostOwed)
    if (socket_->bytesToWrite() >= socketBound || !sendWaitingSound()) return;
}

/// Sends one frame, or the end. Returns whether it sent a frame.
bool VoskServerConnection::sendWaitingSound() {
  while (true) {
    const double wanted = owed_ < slowServerOwes ? frameSeconds : slowFrameSeconds;
    if (sampleRate_ && frame_.size() >= std::min(bytesOf(wanted, *sampleRate_), largestFrame)) {
      sendFrame();
      return true;
    }
    const auto taken = request_->take();
    if (taken.buffer) {
      if (!add(*taken.buffer)) {
        fail(badSound);
        return false;
      }
    } else {
      if (taken.ended) sendEnd();
      return false;
    }
  }
}

/// Adds a buffer to the next frame, and tells the server the rate of the first one. Returns false when the
/// format cannot be sent.
bool VoskServerConnection::add(const platform::AudioBuffer& buffer) {
  const auto& [rate, channels] = buffer.format;
  if (!std::isfinite(rate) || rate < lowestRate || channels != 1 || (sampleRate_ && *sampleRate_ != rate))
    return false;
  if (!sampleRate_) {
    sampleRate_ = rate;
    socket_->sendTextMessage(configMessage.arg(std::lround(rate)));
  }
  frame_.append(reinterpret_cast<const char*>(buffer.samples.data()),
                static_cast<qsizetype>(buffer.samples.size()) * qsizetype{sizeof(std::int16_t)});
  return true;
}

void VoskServerConnection::sendFrame() {
  const auto bytes = std::min(frame_.size(), largestFrame);
  if (owed_++ == 0) watch();
  const QByteArray sent = frame_.left(bytes);
  // Remove it first: sending may call us again.
  frame_.remove(0, bytes);
  kept_.sent(sent);
  socket_->sendBinaryMessage(sent);
}

void VoskServerConnection::sendEnd() {
  while (!frame_.isEmpty()) sendFrame();
  endSent_ = true;
  ++owed_;
  watch();
  socket_->sendTextMessage(endMessage);
}

/// Restarts the watchdog while we wait for the connection, for a dictation or for an answer; else stops it.
void VoskServerConnection::watch() {
  if (!open_ || !request_ || owed_ > 0) {
    watchdog_.start(answerLimit);
  } else {
    watchdog_.stop();
  }
}

void VoskServerConnection::fail(const char* reason) {
  if (over_) return;
  close();
  // Nothing more is read, and what the server does not take is dropped.
  socket_->abort();
  if (task_) task_->fail(reason);
}

void VoskServerConnection::close() {
  over_ = true;
  watchdog_.stop();
  writeCheck_.stop();
  outcome_->settle(Outcome::State::failed, connectionError(*socket_));
  if (request_) request_->onArrival({});
  socket_->disconnect(this);
  socket_->close();
}

}  // namespace tavelo::recognizer
