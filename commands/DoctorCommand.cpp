#include "commands/Commands.h"
#include "commands/Diagnosis.h"
#include "commands/InputOutput.h"

namespace tavelo {

ExitCode runDoctor() {
  const auto findings = examineDesktop();
  print(describe(findings));
  return canDictate(findings) ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
