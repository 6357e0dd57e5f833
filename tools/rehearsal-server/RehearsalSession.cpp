#include "tools/rehearsal-server/RehearsalSession.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include <nlohmann/json.hpp>

namespace tavelo::rehearsal {
namespace {

using nlohmann::json;

std::string transcriptOf(const RehearsalServerOptions& options) {
  if (options.transcriptFile.empty()) return options.transcript;
  std::ifstream file{options.transcriptFile};
  return {std::istreambuf_iterator<char>{file}, {}};
}

void printLine(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

constexpr double usualSampleRate = 8000;
constexpr double fixedSampleRate = 16000;
constexpr quint64 largestMessage = quint64{1024} * 1024;
constexpr std::chrono::seconds heartbeatInterval{20};

/// Code 1011.
constexpr auto serverFailed = QWebSocketProtocol::CloseCodeBadOperation;

}  // namespace

RehearsalSession::RehearsalSession(const RehearsalServerOptions& options, QWebSocket* socket, QObject* parent)
    : QObject(parent),
      options_(options),
      socket_(*socket),
      speech_(transcriptOf(options), options.duration),
      sampleRate_(options.noConfig ? fixedSampleRate : usualSampleRate) {
  if (options.log) printLine("client");
  socket->setParent(this);
  socket->setMaxAllowedIncomingMessageSize(largestMessage);
  connect(socket, &QWebSocket::textMessageReceived, this, &RehearsalSession::receiveText);
  connect(socket, &QWebSocket::binaryMessageReceived, this, &RehearsalSession::receiveSound);
  connect(socket, &QWebSocket::pong, this, [this] { alive_ = true; });
  connect(socket, &QWebSocket::disconnected, this, &QObject::deleteLater);
  heartbeat_.callOnTimeout(this, [this] { ping(); });
  heartbeat_.start(heartbeatInterval);
}

void RehearsalSession::receiveText(const QString& message) {
  if (ended_) {
    if (options_.noConfig) socket_.close();
    return;
  }
  if (message == R"({"eof" : 1})") return answerFinal();
  // This kind of server takes any other text for sound, too little for a word.
  if (options_.noConfig) return answerRunning();
  if (message == R"({"reset" : 1})") {
    answer("text");
    speech_ = HeardSpeech(transcriptOf(options_), options_.duration);
  } else if (!message.contains("config") || !readConfig(message)) {
    ended_ = true;
    socket_.close(serverFailed);
  }
}

void RehearsalSession::receiveSound(const QByteArray& sound) {
  if (ended_) {
    if (options_.noConfig) socket_.close();
    return;
  }
  speech_.listen(sound, sampleRate_);
  ++frames_;
  answerRunning();
  if (options_.dropAfter == frames_) {
    ended_ = true;
    later([this] {
      socket_.flush();
      socket_.abort();
    });
  }
}

/// Reads a config message, which gets no answer. Returns false when it is malformed.
bool RehearsalSession::readConfig(const QString& message) {
  const auto document = json::parse(message.toStdString(), nullptr, false);
  if (!document.is_object() || !document.contains("config") || !document["config"].is_object()) return false;
  const auto& config = document["config"];
  if (!config.contains("sample_rate")) return true;
  const auto& rate = config["sample_rate"];
  if (!rate.is_number() || rate.get<double>() <= 0 || rate.get<double>() > 1e6) return false;
  sampleRate_ = rate.get<double>();
  return true;
}

/// Before the first word there is no utterance and so no "partial" member.
void RehearsalSession::answerRunning() { answer(speech_.words().empty() ? "text" : "partial"); }

void RehearsalSession::answerFinal() {
  ended_ = true;
  answer("text");
  if (!options_.noConfig && !options_.neverAnswer) later([this] { socket_.close(); });
}

void RehearsalSession::answer(const char* member) {
  if (options_.neverAnswer) return;
  const std::string words = speech_.words();
  const json reply = {{member, words}};
  // A transcript from the command line need not be UTF-8.
  auto text =
      (options_.arrays ? json::array({reply}) : reply).dump(-1, ' ', false, json::error_handler_t::replace);
  if (options_.rubbish) text.pop_back();
  later([this, message = QString::fromStdString(text), line = std::string{member} + ' ' + words] {
    socket_.sendTextMessage(message);
    if (options_.log) printLine(line);
  });
}

/// Steps stay in order, since the delay never changes.
void RehearsalSession::later(std::function<void()> step) {
  if (options_.delay.count() == 0) return step();
  QTimer::singleShot(options_.delay, Qt::PreciseTimer, this, std::move(step));
}

void RehearsalSession::ping() {
  if (!std::exchange(alive_, false)) return socket_.abort();
  socket_.ping();
}

}  // namespace tavelo::rehearsal
