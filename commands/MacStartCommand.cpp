#include <string>

#include "app/MacProgram.h"
#include "app/SingleInstance.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "commands/MacDiagnosis.h"
#include "commands/RunningProgram.h"
#include "platform/Platform.h"

namespace tavelo {

ExitCode runStart() {
  // The folder of the history. The first start finds none.
  makeCommandFileManager()->createDirectory(instanceFolder());
  SingleInstance instance(instanceFolder());
  if (!instance.claim()) return openRunningMenu(instance);
  MacProgram program;
  const auto receive = [&](InstanceMessage message, const std::string& argument) {
    if (message == InstanceMessage::forgetHistory) return program.forget(argument);
    if (message == InstanceMessage::examine) return describe(diagnose(examineMac()));
    program.receive(message);
    return std::string();
  };
  const auto listening = instance.listen(platform::current().mainQueue, receive);
  if (!listening) throw CommandFailure(instance.errorText());
  program.run();
  return ExitCode::done;
}

}  // namespace tavelo
