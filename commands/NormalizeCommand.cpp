#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "text/TextNormalizer.h"

namespace tavelo {

ExitCode runNormalize(const NormalizeOptions& options) {
  print(TextNormalizer::normalize(readInput(options.file)) + '\n');
  return ExitCode::done;
}

}  // namespace tavelo
