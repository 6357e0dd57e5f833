#include "platform/recognizer/server/VoskServer.h"

#include <QPointer>
#include <utility>

#include "language/Language.h"
#include "language/Texts.h"
#include "platform/recognizer/server/VoskServerConnection.h"

namespace tavelo::recognizer {
namespace {

using language::say;
namespace words = language::words;

constexpr int defaultPort = 2700;
constexpr int defaultSecurePort = 443;

}  // namespace

VoskServerAddress VoskServerAddress::parse(const std::string& text) {
  QUrl url{QString::fromStdString(text), QUrl::StrictMode};
  const auto refuse = [&](const std::string& why) {
    return VoskServerAddress{std::nullopt, say(words::noAddress, {text, why})};
  };
  if (!url.isValid()) return refuse(say(words::addressShape));
  const bool secure = url.scheme() == "wss";
  if (!secure && url.scheme() != "ws") return refuse(say(words::addressStart));
  if (url.host().isEmpty()) return refuse(say(words::addressWithoutHost));
  if (url.port() == 0) return refuse(say(words::addressWithPortZero));
  if (url.hasFragment()) return refuse(say(words::addressWithFragment));
  if (url.port() < 0) url.setPort(secure ? defaultSecurePort : defaultPort);
  return {std::move(url), {}};
}

VoskServer::VoskServer(QUrl address) : address_(std::move(address)) { thread_.setObjectName("recogniser"); }

VoskServer::~VoskServer() { stop(); }

VoskServer::Attempt VoskServer::connect() {
  auto outcome = std::make_shared<Outcome>();
  if (stopped_) {
    outcome->settle(Outcome::State::failed, say(words::recognitionStopped));
    return {nullptr, std::move(outcome)};
  }
  if (!thread_.isRunning()) thread_.start();
  // Deleted on its own thread, when the attempt lets it go or when the thread ends.
  auto* connection = new VoskServerConnection(address_, outcome);
  connection->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, connection, &QObject::deleteLater);
  QMetaObject::invokeMethod(connection, &VoskServerConnection::open, Qt::QueuedConnection);
  const auto letGo = [alive = QPointer{connection}](VoskServerConnection*) {
    if (alive) alive->deleteLater();
  };
  return {{connection, letGo}, std::move(outcome)};
}

void VoskServer::recognize(Attempt attempt, std::shared_ptr<RecognitionTask> task,
                           std::shared_ptr<platform::BufferedRecognitionRequest> request) {
  std::erase_if(tasks_, [](const auto& held) { return held->isOver(); });
  if (stopped_) return;
  tasks_.push_back(task);
  auto* connection = attempt.connection.get();
  // The task holds the connection until it is over.
  task->onEnd([held = std::move(attempt.connection)] {});
  QMetaObject::invokeMethod(
      connection,
      [connection, task = std::move(task), request = std::move(request)] {
        connection->transcribe(task, request);
      },
      Qt::QueuedConnection);
}

void VoskServer::stop() {
  stopped_ = true;
  for (const auto& task : tasks_) task->end();
  tasks_.clear();
  thread_.quit();
  thread_.wait();
}

}  // namespace tavelo::recognizer
