#include "commands/RunningProgram.h"

#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"

namespace tavelo {
namespace {

ExitCode ask(const SingleInstance& instance, InstanceMessage message, const char* done) {
  if (!instance.errorText().empty()) throw CommandFailure(instance.errorText());
  if (instance.send(message, true).answer != InstanceAnswer::taken)
    throw CommandFailure("it is already running, and does not answer");
  print(done);
  return ExitCode::done;
}

}  // namespace

void tellRunningProgram(InstanceMessage message) {
  const auto answer = SingleInstance(instanceFolder()).send(message, false).answer;
  if (answer == InstanceAnswer::nobody) throw CommandFailure("it is not running");
  if (answer == InstanceAnswer::silent) throw CommandFailure("the running program does not answer");
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  return ask(instance, InstanceMessage::showMenu, "Tavelo is already running; its menu is open.\n");
}

ExitCode openRunningSetup(const SingleInstance& instance) {
  return ask(instance, InstanceMessage::setUp, "Tavelo is already running; its set-up window is open.\n");
}

}  // namespace tavelo
