#include "commands/RunningProgram.h"

#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"

namespace tavelo {

void tellRunningProgram(InstanceMessage message) {
  const auto answer = SingleInstance(instanceFolder()).send(message, false).answer;
  if (answer == InstanceAnswer::nobody) throw CommandFailure("it is not running");
  if (answer == InstanceAnswer::silent) throw CommandFailure("the running program does not answer");
}

}  // namespace tavelo
