#pragma once

#include <string>

#include "commands/CommandLine.h"

namespace tavelo {

struct NormalizeOptions {
  std::string file = "-";
};

/// Prints the finished text of a raw transcript and one line feed. Throws a `CommandFailure`.
ExitCode runNormalize(const NormalizeOptions& options);

}  // namespace tavelo
