#include "platform/recognizer/server/VoskServerSpeech.h"

#include <string_view>
#include <utility>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/MainQueue.h"
#include "platform/recognizer/server/VoskServer.h"
#include "platform/recognizer/server/VoskServerAddress.h"

namespace tavelo::recognizer {
namespace {

constexpr std::string_view vietnamese = "vi_VN";

class Recognizer final : public platform::SpeechRecognizer {
 public:
  explicit Recognizer(std::shared_ptr<VoskServer> server) : server_(std::move(server)) {}

  /// The connection stays for the dictation that follows.
  bool isAvailable() override {
    attempt_ = server_->connect();
    return server_->await(attempt_);
  }

  std::shared_ptr<platform::SpeechRecognitionTask> recognitionTask(
      std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request,
      ResultHandler resultHandler) override {
    if (!attempt_.connection) attempt_ = server_->connect();
    return server_->recognize(std::move(attempt_), request, std::move(resultHandler));
  }

 private:
  const std::shared_ptr<VoskServer> server_;
  VoskServer::Attempt attempt_;
};

}  // namespace

VoskServerSpeech::VoskServerSpeech(platform::MainQueue& mainQueue, const std::string& address)
    : mainQueue_(mainQueue) {
  auto parsed = VoskServerAddress::parse(address);
  addressFailure_ = std::move(parsed.failure);
  if (parsed.url) server_ = std::make_shared<VoskServer>(mainQueue, *std::move(parsed.url));
}

VoskServerSpeech::~VoskServerSpeech() {
  // Recognisers may still hold the server.
  if (server_) server_->stop();
}

std::string VoskServerSpeech::failure(const std::string& localeIdentifier) const {
  if (!server_) return addressFailure_;
  if (localeIdentifier != vietnamese) return "the server is taken to know Vietnamese only";
  return server_->failure();
}

std::shared_ptr<platform::SpeechRecognizer> VoskServerSpeech::makeRecognizer(
    const std::string& localeIdentifier) {
  if (!server_ || localeIdentifier != vietnamese) return nullptr;
  return std::make_shared<Recognizer>(server_);
}

std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest>
VoskServerSpeech::makeAudioBufferRecognitionRequest() {
  return std::make_shared<platform::BufferedRecognitionRequest>();
}

void VoskServerSpeech::requestAuthorization(
    std::function<void(platform::SpeechAuthorizationStatus)> handler) {
  mainQueue_.async(lifetime_.guard([handler = std::move(handler)] {
    if (handler) handler(platform::SpeechAuthorizationStatus::authorized);
  }));
}

}  // namespace tavelo::recognizer
