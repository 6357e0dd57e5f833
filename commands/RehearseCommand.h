#pragma once

#include <string>

#include "commands/CommandLine.h"

namespace tavelo {

struct RehearseOptions {
  std::string story;
  /// A WAV file; empty: the story's own words.
  std::string audio;
  double releaseAfter = 1.0;
};

/// Plays a story, prints its timeline and how it ended. Failed when anything was not as the story says.
/// Throws a `CommandFailure` when there is nothing to play.
ExitCode runRehearse(const RehearseOptions& options);

}  // namespace tavelo
