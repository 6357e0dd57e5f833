#include "platform/recognizer/server/VoskServerSpeech.h"

#include <string_view>
#include <utility>

#include "language/Language.h"
#include "language/Texts.h"
#include "platform/recognizer/server/VoskServer.h"

namespace tavelo::recognizer {
namespace {

using language::say;
namespace words = language::words;

constexpr std::string_view vietnamese = "vi_VN";

class Recognizer final : public EngineRecognizer {
 public:
  Recognizer(platform::MainQueue& mainQueue, std::shared_ptr<WaitingNotice> notice,
             std::shared_ptr<VoskServer> server)
      : EngineRecognizer(mainQueue, std::move(notice)), server_(std::move(server)) {}

 private:
  /// The connection that the question made is kept for the dictation that follows.
  std::shared_ptr<const Outcome> engine() override {
    if (!attempt_.connection || attempt_.outcome->state() == Outcome::State::failed)
      attempt_ = server_->connect();
    return attempt_.outcome;
  }

  void recognize(std::shared_ptr<RecognitionTask> task,
                 std::shared_ptr<platform::BufferedRecognitionRequest> request) override {
    server_->recognize(std::move(attempt_), std::move(task), std::move(request));
  }

  const std::shared_ptr<VoskServer> server_;
  VoskServer::Attempt attempt_;
};

}  // namespace

VoskServerSpeech::VoskServerSpeech(platform::MainQueue& mainQueue, const std::string& address)
    : EngineSpeech(mainQueue) {
  auto parsed = VoskServerAddress::parse(address);
  addressFailure_ = std::move(parsed.failure);
  if (parsed.url) server_ = std::make_shared<VoskServer>(*std::move(parsed.url));
}

VoskServerSpeech::~VoskServerSpeech() {
  // Recognisers may still hold the server.
  if (server_) server_->stop();
}

std::string VoskServerSpeech::failure(const std::string& localeIdentifier, std::chrono::milliseconds limit) {
  if (!server_) return addressFailure_;
  if (localeIdentifier != vietnamese) return say(words::serverKnowsVietnamese);
  const auto attempt = server_->connect();
  if (attempt.outcome->wait(limit) == Outcome::State::pending)
    return say(words::noAnswerWithin, {std::to_string(limit.count())});
  return attempt.outcome->failure();
}

std::shared_ptr<platform::SpeechRecognizer> VoskServerSpeech::makeRecognizer(
    const std::string& localeIdentifier) {
  if (!server_ || localeIdentifier != vietnamese) return nullptr;
  return std::make_shared<Recognizer>(mainQueue(), notice(), server_);
}

}  // namespace tavelo::recognizer
