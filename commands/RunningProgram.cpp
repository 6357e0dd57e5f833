#include "commands/RunningProgram.h"

#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"

namespace tavelo {

void tellRunningProgram(InstanceMessage message) {
  const auto answer = SingleInstance(instanceFolder()).send(message, false).answer;
  if (answer == InstanceAnswer::nobody) throw CommandFailure("it is not running");
  if (answer == InstanceAnswer::silent) throw CommandFailure("the running program does not answer");
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  if (!instance.errorText().empty()) throw CommandFailure(instance.errorText());
  if (instance.send(InstanceMessage::showMenu, true).answer != InstanceAnswer::taken) {
    throw CommandFailure("it is already running, and does not answer");
  }
  print("Tavelo is already running; its menu is open.\n");
  return ExitCode::done;
}

}  // namespace tavelo
