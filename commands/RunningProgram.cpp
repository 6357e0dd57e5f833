#include "commands/RunningProgram.h"

#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

}  // namespace

void tellRunningProgram(InstanceMessage message) {
  const auto answer = SingleInstance(instanceFolder()).send(message, false).answer;
  if (answer == InstanceAnswer::nobody) throw CommandFailure(say(words::notRunning));
  if (answer == InstanceAnswer::silent) throw CommandFailure(say(words::noAnswer));
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  if (!instance.errorText().empty()) throw CommandFailure(instance.errorText());
  if (instance.send(InstanceMessage::showMenu, true).answer != InstanceAnswer::taken) {
    throw CommandFailure(say(words::runningWithoutAnswer));
  }
  print(say(words::menuIsOpen));
  return ExitCode::done;
}

}  // namespace tavelo
