#include "commands/RunningProgram.h"

#include "commands/CommandWiring.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

/// Has the program that runs take the message, and says so.
ExitCode ask(const SingleInstance& instance, InstanceMessage message, const language::Text& done) {
  if (!instance.errorText().empty()) throw CommandFailure(instance.errorText());
  if (instance.send(message, true).answer != InstanceAnswer::taken)
    throw CommandFailure(say(words::runningWithoutAnswer));
  print(say(done));
  return ExitCode::done;
}

}  // namespace

void tellRunningProgram(InstanceMessage message) {
  const auto answer = SingleInstance(instanceFolder()).send(message, false).answer;
  if (answer == InstanceAnswer::nobody) throw CommandFailure(say(words::notRunning));
  if (answer == InstanceAnswer::silent) throw CommandFailure(say(words::noAnswer));
}

ExitCode openRunningMenu(const SingleInstance& instance) {
  return ask(instance, InstanceMessage::showMenu, words::menuIsOpen);
}

ExitCode openRunningSetup(const SingleInstance& instance) {
  return ask(instance, InstanceMessage::setUp, words::setupIsOpen);
}

}  // namespace tavelo
