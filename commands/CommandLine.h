#pragma once

namespace tavelo {

/// How a command ends.
enum class ExitCode : int { done = 0, failed = 1, wrongUsage = 2 };

struct DesktopCommands;

/// Reads the command line, runs what it asks for and returns the process's exit code. `desktop` is what this
/// build can do beside the commands of every build. Whatever fails is said in one line on standard error.
/// Main thread.
int runCommandLine(int argc, const char* const* argv, const DesktopCommands& desktop);

}  // namespace tavelo
