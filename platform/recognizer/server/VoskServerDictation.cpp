#include "platform/recognizer/server/VoskServerDictation.h"

#include <utility>

#include "platform/recognizer/server/VoskServerConnection.h"

namespace tavelo::recognizer {

ConnectionHandle::ConnectionHandle(VoskServerConnection* connection) : connection_(connection) {}

ConnectionHandle::~ConnectionHandle() {
  if (connection_) connection_->deleteLater();
}

VoskServerConnection* ConnectionHandle::get() const { return connection_; }

VoskServerDictation::VoskServerDictation(std::unique_ptr<ConnectionHandle> connection,
                                         platform::SpeechRecognizer::ResultHandler resultHandler)
    : connection_(std::move(connection)), resultHandler_(std::move(resultHandler)) {}

VoskServerDictation::~VoskServerDictation() = default;

void VoskServerDictation::cancel() {
  resultHandler_ = nullptr;
  connection_.reset();
}

void VoskServerDictation::deliver(const std::optional<platform::SpeechRecognitionResult>& result,
                                  const std::optional<platform::PlatformError>& error) {
  // Called through a copy: the handler may cancel this dictation.
  const auto handler = resultHandler_;
  if (error || (result && result->isFinal)) cancel();
  if (handler) handler(result, error);
}

}  // namespace tavelo::recognizer
