#pragma once

#include <cstddef>

#include "commands/CommandLine.h"

namespace tavelo {

struct HistoryOptions {
  std::size_t limit = 20;
  bool json = false;
};

/// Lists recent dictations, newest first; makes nothing on disk. A history file that cannot be read is a
/// failure, one that does not exist an empty history. Throws a `CommandFailure`.
ExitCode runHistory(const HistoryOptions& options);

}  // namespace tavelo
