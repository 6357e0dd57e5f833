#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "settings/Settings.h"

namespace tavelo {

/// How well a service works: fully, with less comfort, or so badly that no dictation can work.
enum class Verdict : std::uint8_t { fine, limited, broken };

/// One line of the doctor: a service, and what was found or what to do about it. In the current language.
struct Finding {
  std::string service;
  Verdict verdict = Verdict::fine;
  std::string words;
  /// A command for a shell that mends it; empty if there is none.
  std::string fix = {};
};

/// The findings on what the display server provides. Each kind of display server has its own diagnosis, which
/// makes these.
struct DisplayServerFindings {
  Finding display;
  Finding rawKeys;
  Finding holdKey;
  Finding windowManager;
  Finding clipboard;
};

/// Where the value of the first of these settings comes from that has one: "from" the variable or the file,
/// or "the default".
std::string origin(const settings::Settings& settings, std::initializer_list<const char*> names);

/// Examines this desktop, in a second or two. One finding for each service, always the same services in the
/// same order, and one more each for a running program that was upgraded and for a damaged settings file.
/// Main thread, without an application object. `withLogs` is whether a finding may hold what a log says.
std::vector<Finding> examineDesktop(bool withLogs);

/// The kind of session that this desktop is: "x11" or "wayland".
std::string sessionKind();

/// Why nothing can be written to the folder, which need not exist yet; empty if something can.
std::string writeError(std::filesystem::path folder);

/// The finding on the history's folder; `error` as `writeError` says it.
Finding historyFolder(const std::string& folder, const std::string& error);

/// Whether a dictation could work.
bool canDictate(const std::vector<Finding>& findings);
/// The same, of findings that were described.
bool canDictate(const std::string& lines);

/// One line for each finding, and one below it for its command; each with a line feed.
std::string describe(const std::vector<Finding>& findings);

}  // namespace tavelo
