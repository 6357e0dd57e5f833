#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "commands/LinuxFacts.h"

namespace tavelo {

/// How a service stands: fine, workable with less comfort, or such that no dictation can work.
enum class Verdict : std::uint8_t { fine, limited, broken };

/// One service of a desktop, with what was found or the step that mends it. English, one line.
struct Finding {
  std::string service;
  Verdict verdict = Verdict::fine;
  std::string words;
};

/// Judges a desktop: one finding for each service, always the same ones in the same order.
std::vector<Finding> diagnose(const LinuxFacts& facts);

/// Whether a dictation could work.
bool canDictate(const std::vector<Finding>& findings);

/// One line for each finding, each ended by a line feed.
std::string describe(const std::vector<Finding>& findings);

}  // namespace tavelo
