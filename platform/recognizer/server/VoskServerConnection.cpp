#include "platform/recognizer/server/VoskServerConnection.h"

#include <QWebSocket>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <utility>

#include "platform/recognizer/MixDown.h"
#include "platform/recognizer/VoskReply.h"

namespace tavelo::recognizer {
namespace {

using platform::PlatformError;
using platform::SpeechRecognitionResult;

constexpr const char* connectionLost = "Mất kết nối với máy chủ nhận diện giọng nói.";
constexpr const char* serverIsSilent = "Máy chủ nhận diện giọng nói không trả lời.";
constexpr const char* notUnderstood = "Không hiểu được câu trả lời của máy chủ nhận diện giọng nói.";
constexpr const char* badSound = "Không gửi được loại âm thanh này đến máy chủ nhận diện giọng nói.";

constexpr std::chrono::seconds answerLimit{10};
/// After the answer to the end; the server's closing normally comes with it.
constexpr std::chrono::milliseconds closingLimit{500};

/// To the letter: a server closes at any other spelling.
const QString endMessage = R"({"eof" : 1})";
const QString configMessage = R"({"config" : {"sample_rate" : %1}})";

/// Sound in the socket's own buffer; the rest waits in the request, which is bounded.
constexpr qint64 socketBound = qint64{64} * 1024;
/// A frame as it should be: a server answers each, which costs it as much as a tenth of a second of sound.
constexpr double frameSeconds = 0.1;
/// A frame for a server that owes this many answers.
constexpr int slowServerOwes = 5;
constexpr double slowFrameSeconds = 0.5;
/// Below it, sound is no speech.
constexpr double lowestRate = 1000;
/// A server closes at 1 MiB.
constexpr qsizetype largestFrame = qsizetype{512} * 1024;
/// An honest answer holds a few thousand bytes.
constexpr quint64 largestReply = quint64{4} * 1024 * 1024;

qsizetype bytesOf(double seconds, double sampleRate) {
  return static_cast<qsizetype>(seconds * sampleRate) * qsizetype{sizeof(std::int16_t)};
}

}  // namespace

/// Reaches the connection from the capture thread, which may be in the middle of it when the connection ends.
class VoskServerConnection::Wake final {
 public:
  explicit Wake(VoskServerConnection& connection) : connection_(&connection) {}

  void call() {
    const std::lock_guard lock{mutex_};
    if (connection_ == nullptr || waits_) return;
    waits_ = true;
    QMetaObject::invokeMethod(
        connection_,
        [this, connection = connection_] {
          {
            const std::lock_guard called{mutex_};
            waits_ = false;
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
  bool waits_ = false;
};

VoskServerConnection::VoskServerConnection(QUrl address, std::shared_ptr<ConnectionOutcome> outcome)
    : address_(std::move(address)), outcome_(std::move(outcome)) {
  watchdog_.setSingleShot(true);
  watchdog_.callOnTimeout(this, [this] {
    if (endSent_ && owed_ <= 0) {
      disconnected();
    } else {
      outcome_->settle(ConnectionOutcome::State::failed, "no answer");
      fail(serverIsSilent);
    }
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
  connect(socket_.get(), &QWebSocket::connected, this, [this] { connected(); });
  connect(socket_.get(), &QWebSocket::disconnected, this, [this] { disconnected(); });
  connect(socket_.get(), &QWebSocket::textMessageReceived, this,
          [this](const QString& reply) { receive(reply); });
  connect(socket_.get(), &QWebSocket::bytesWritten, this, [this] { pump(); });
  // Not every error before the connection stands brings a `disconnected`.
  connect(socket_.get(), QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error), this, [this] {
    if (!open_) disconnected();
  });
  watch();
  socket_->open(address_);
}

void VoskServerConnection::transcribe(std::shared_ptr<platform::BufferedRecognitionRequest> request,
                                      Reporter report) {
  request_ = std::move(request);
  report_ = std::move(report);
  reportsPartialResults_ = request_->shouldReportPartialResults();
  if (over_) return report_(std::nullopt, PlatformError{connectionLost});
  if (open_) watch();
  wake_ = std::make_shared<Wake>(*this);
  request_->onArrival([wake = wake_] { wake->call(); });
  pump();
}

void VoskServerConnection::connected() {
  open_ = true;
  watch();
  outcome_->settle(ConnectionOutcome::State::reached);
  pump();
}

void VoskServerConnection::disconnected() {
  if (over_) return;
  if (!endSent_ || owed_ > 0) return fail(connectionLost);
  finish(SpeechRecognitionResult{transcript_.text(), true}, std::nullopt);
}

void VoskServerConnection::receive(const QString& reply) {
  if (over_ || !request_) return;
  const auto read =
      recognizer::VoskReply::parse(reply.toStdString(), recognizer::ReplyArrays::firstElementCounts);
  if (!read) return fail(notUnderstood);
  if (read->text) transcript_.endUtterance(*read->text);
  if (read->partial) transcript_.setPartial(*read->partial);
  // A server that answers what others let pass must not be taken to owe less than nothing.
  if (endSent_ || owed_ > 0) --owed_;
  if (endSent_ && owed_ <= 0) {
    // Perhaps the last answer. Which one is, only the closing tells: a server may answer what others let pass
    // in silence. Some close only when something more comes.
    if (owed_ == 0) socket_->sendTextMessage(endMessage);
    watchdog_.start(closingLimit);
    return;
  }
  watch();
  auto transcript = transcript_.text();
  if (reportsPartialResults_ && transcript != reported_) {
    reported_ = transcript;
    report_(SpeechRecognitionResult{std::move(transcript), false}, std::nullopt);
  }
  pump();
}

/// Sends what may be sent now.
void VoskServerConnection::pump() {
  while (open_ && !over_ && request_ && !endSent_ && socket_->bytesToWrite() < socketBound) {
    if (!sendWaitingSound()) return;
  }
}

/// Sends one frame, or the end; false when there was not enough for either.
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

/// Adds a buffer to the next frame, after telling the server its rate; false when that cannot be sent.
bool VoskServerConnection::add(const platform::AudioBuffer& buffer) {
  const auto& [rate, channels] = buffer.format;
  if (!std::isfinite(rate) || rate < lowestRate || channels == 0 || (sampleRate_ && *sampleRate_ != rate))
    return false;
  if (!sampleRate_) {
    sampleRate_ = rate;
    socket_->sendTextMessage(configMessage.arg(std::lround(rate)));
  }
  recognizer::mixDown(buffer.samples, channels, mono_);
  frame_.append(reinterpret_cast<const char*>(mono_.data()),
                static_cast<qsizetype>(mono_.size()) * qsizetype{sizeof(std::int16_t)});
  return true;
}

void VoskServerConnection::sendFrame() {
  const auto bytes = std::min(frame_.size(), largestFrame);
  if (owed_++ == 0) watch();
  const QByteArray sent = frame_.left(bytes);
  // Taken out before: sending may call us again.
  frame_.remove(0, bytes);
  socket_->sendBinaryMessage(sent);
}

void VoskServerConnection::sendEnd() {
  while (!frame_.isEmpty()) sendFrame();
  endSent_ = true;
  ++owed_;
  watch();
  socket_->sendTextMessage(endMessage);
}

/// An answer is due from now on, or a dictation that uses the connection, or nothing is.
void VoskServerConnection::watch() {
  if (!open_ || !request_ || owed_ > 0) {
    watchdog_.start(answerLimit);
  } else {
    watchdog_.stop();
  }
}

void VoskServerConnection::fail(const char* reason) { finish(std::nullopt, PlatformError{reason}); }

void VoskServerConnection::finish(std::optional<SpeechRecognitionResult> result,
                                  std::optional<PlatformError> error) {
  if (over_) return;
  over_ = true;
  watchdog_.stop();
  outcome_->settle(ConnectionOutcome::State::failed, socket_->errorString().toStdString());
  if (request_) request_->onArrival({});
  socket_->disconnect(this);
  socket_->close();
  if (report_) report_(std::move(result), std::move(error));
}

}  // namespace tavelo::recognizer
