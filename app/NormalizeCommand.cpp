#include "app/NormalizeCommand.h"

#include "app/InputFile.h"
#include "app/Output.h"
#include "text/TextNormalizer.h"

namespace tavelo {

ExitCode runNormalize(const NormalizeOptions& options) {
  print(TextNormalizer::normalize(readInput(options.file)) + '\n');
  return ExitCode::done;
}

}  // namespace tavelo
