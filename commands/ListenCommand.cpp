#include "commands/Commands.h"
#include "commands/RunningProgram.h"

namespace tavelo {
namespace {

InstanceMessage messageFor(const std::string& action) {
  if (action == "start") return InstanceMessage::startListening;
  if (action == "stop") return InstanceMessage::stopListening;
  if (action == "cancel") return InstanceMessage::cancelListening;
  return InstanceMessage::toggleListening;
}

}  // namespace

ExitCode runListen(const ListenOptions& options) {
  tellRunningProgram(messageFor(options.action));
  return ExitCode::done;
}

}  // namespace tavelo
