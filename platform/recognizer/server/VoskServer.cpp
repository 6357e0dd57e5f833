#include "platform/recognizer/server/VoskServer.h"

#include <chrono>
#include <utility>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/MainQueue.h"
#include "platform/recognizer/server/VoskServerConnection.h"

namespace tavelo::recognizer {
namespace {

constexpr std::chrono::milliseconds reachLimit{250};
constexpr const char* recognitionFailed = "Bộ nhận diện giọng nói gặp lỗi.";

}  // namespace

VoskServer::VoskServer(platform::MainQueue& mainQueue, QUrl address)
    : mainQueue_(mainQueue), address_(std::move(address)) {
  thread_.setObjectName("recogniser");
}

VoskServer::~VoskServer() { stop(); }

VoskServer::Attempt VoskServer::connect() {
  if (stopped_) return {};
  if (!thread_.isRunning()) thread_.start();
  auto outcome = std::make_shared<ConnectionOutcome>();
  // The thread owns it: it ends with the handle, else with the thread.
  auto* connection = new VoskServerConnection(address_, outcome);
  connection->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, connection, &QObject::deleteLater);
  QMetaObject::invokeMethod(connection, &VoskServerConnection::open, Qt::QueuedConnection);
  return {std::make_unique<ConnectionHandle>(connection), std::move(outcome)};
}

bool VoskServer::await(Attempt& attempt) {
  using State = ConnectionOutcome::State;
  if (!attempt.outcome) return false;
  const State state = attempt.outcome->wait(reachLimit);
  failure_ = attempt.outcome->failure();
  if (state != State::pending) {
    lateOnesGetThrough_ = lateOnesGetThrough_ && state == State::reached;
    return state == State::reached;
  }
  const State before = late_.outcome ? late_.outcome->wait({}) : State::pending;
  if (before != State::pending) lateOnesGetThrough_ = before == State::reached;
  late_ = {nullptr, attempt.outcome};
  if (lateOnesGetThrough_) return true;
  failure_ = "no answer within a quarter of a second";
  late_.connection = std::move(attempt.connection);
  return false;
}

std::shared_ptr<VoskServerDictation> VoskServer::recognize(
    Attempt attempt, const std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>& request,
    platform::SpeechRecognizer::ResultHandler resultHandler) {
  std::erase_if(dictations_, [](const auto& dictation) { return dictation->isOver(); });
  auto* connection = attempt.connection ? attempt.connection->get() : nullptr;
  auto dictation =
      std::make_shared<VoskServerDictation>(std::move(attempt.connection), std::move(resultHandler));
  const auto report = [&queue = mainQueue_, weak = std::weak_ptr{dictation}](auto result, auto error) {
    queue.async([weak, result = std::move(result), error = std::move(error)] {
      if (const auto alive = weak.lock()) alive->deliver(result, error);
    });
  };
  auto buffered = std::dynamic_pointer_cast<platform::BufferedRecognitionRequest>(request);
  if (stopped_) return dictation;
  dictations_.push_back(dictation);
  if (connection == nullptr || !buffered) {
    report(std::optional<platform::SpeechRecognitionResult>{},
           std::optional{platform::PlatformError{recognitionFailed}});
    return dictation;
  }
  QMetaObject::invokeMethod(
      connection,
      [connection, report, buffered = std::move(buffered)] { connection->transcribe(buffered, report); },
      Qt::QueuedConnection);
  return dictation;
}

void VoskServer::stop() {
  stopped_ = true;
  for (const auto& dictation : dictations_) dictation->cancel();
  dictations_.clear();
  late_ = {};
  thread_.quit();
  thread_.wait();
}

}  // namespace tavelo::recognizer
