#pragma once

#include <string>
#include <vector>

#include "commands/Diagnosis.h"

namespace tavelo {

/// What a report of the doctor says besides its findings. A plain value.
struct DoctorReport {
  std::string version;
  /// "x11" or "wayland".
  std::string session;
  /// What the desktop calls itself (XDG_CURRENT_DESKTOP); may be empty.
  std::string desktop;
  /// The user's home folder and name, which the report leaves out of paths.
  std::string home;
  std::string user;
  std::vector<Finding> findings;
};

/// One JSON document for people who help, without a line feed at the end. The home folder is "~" in it, the
/// user's name in a path is "…", and a password in an address is left out.
std::string toJson(const DoctorReport& report);

}  // namespace tavelo
