#include "commands/Commands.h"
#include "commands/RunningProgram.h"

namespace tavelo {

ExitCode runRestart() {
  tellRunningProgram(InstanceMessage::restart);
  return ExitCode::done;
}

}  // namespace tavelo
