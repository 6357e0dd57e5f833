#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// What each command does. main.cpp reads the command line and runs one of them; each has a .cpp of its own.
///
/// Main thread. The result is the exit code of the process. A command that cannot do its work throws a
/// `CommandFailure`, whose text main.cpp prints as one line on standard error.
namespace tavelo {

enum class ExitCode : int { done = 0, failed = 1, wrongUsage = 2 };

struct NormalizeOptions {
  /// "-" is standard input.
  std::string file = "-";
};

/// Prints the finished text of a raw transcript and one line feed.
ExitCode runNormalize(const NormalizeOptions& options);

struct HistoryOptions {
  std::size_t limit = 20;
  bool json = false;
  /// How many of the newest to forget, or "all"; empty to list them.
  std::string forget = {};
};

/// Lists recent dictations, newest first. Creates nothing on disk. Without a history file the history is
/// empty; a history file that cannot be read is a failure. Or has dictations forgotten, by the running
/// program if there is one.
ExitCode runHistory(const HistoryOptions& options);

struct RehearseOptions {
  std::string story;
  /// A WAV file to speak instead of the story's own words; empty for those.
  std::string audio;
  /// Seconds from the last sample to the release of the key.
  double releaseAfter = 1.0;
};

/// Plays a story and prints its timeline and its outcome. Fails if anything was not as the story says.
ExitCode runRehearse(const RehearseOptions& options);

struct TranscribeOptions {
  std::vector<std::string> files;
  /// What was said in them; see `recordings::Transcripts`. Empty for no comparison.
  std::string against;
  bool json = false;
};

/// Prints what the configured recogniser hears in recordings. A recording that fails is one line on standard
/// error; the others go on, and the command fails in the end.
ExitCode runTranscribe(const TranscribeOptions& options);

struct GetModelOptions {
  /// A name from the list, or "vi_VN" for the model that we recommend.
  std::string model = "vi_VN";
  bool list = false;
  /// Fetch again what is already installed.
  bool replace = false;
  /// SHA-256 checksums that the archives must have; empty for none.
  std::string sha256;
  std::string librarySha256;
  /// A folder with the archives, so that nothing is fetched; empty for the network.
  std::string from;
};

/// Fetches and installs a speech model and the library for it, or lists the models. Only the Linux desktop
/// can.
ExitCode runGetModel(const GetModelOptions& options);

// The remaining commands are only in a build with a desktop; see `DesktopCommands`.

/// Starts the program and returns when it has quit. If it is already running, opens that one's menu instead.
ExitCode runStart();

/// Opens the set-up window of the running program, or starts the program with it open.
ExitCode runSetup();

/// Asks the running program to insert the last finished text.
ExitCode runInsertLast();

/// Asks the running program to start again, for instance because it was upgraded. It waits for the end of a
/// dictation.
ExitCode runRestart();

struct ListenOptions {
  /// "start", "stop", "toggle" or "cancel".
  std::string action;
};

/// Has the running program begin or end a dictation, as the hold key or the fallback keys would. Does not
/// wait for it.
ExitCode runListen(const ListenOptions& options);

struct AutostartOptions {
  /// "on", "off" or "status".
  std::string action;
};

/// Has the user's session start the program, or not, or prints one line on whether it does. Only the Linux
/// desktop can.
ExitCode runAutostart(const AutostartOptions& options);

struct DoctorOptions {
  bool json = false;
  /// Of this program.
  std::string version = {};
};

/// Prints one line for each service that a dictation needs: what is fine, or what to do about it; below it a
/// command that does it, if there is one. Or all of that as one JSON document in English. Fails if no
/// dictation could work.
ExitCode runDoctor(const DoctorOptions& options);

}  // namespace tavelo
