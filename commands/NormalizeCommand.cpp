#include "commands/NormalizeCommand.h"

#include "commands/InputFile.h"
#include "commands/Output.h"
#include "text/TextNormalizer.h"

namespace tavelo {

ExitCode runNormalize(const NormalizeOptions& options) {
  print(TextNormalizer::normalize(readInput(options.file)) + '\n');
  return ExitCode::done;
}

}  // namespace tavelo
