#include "commands/Commands.h"
#include "commands/RunningProgram.h"

namespace tavelo {

ExitCode runInsertLast() {
  tellRunningProgram(InstanceMessage::insertLastText);
  return ExitCode::done;
}

}  // namespace tavelo
