#include <algorithm>
#include <cstddef>

#include "commands/Commands.h"
#include "commands/Diagnosis.h"
#include "commands/InputOutput.h"

namespace tavelo {
namespace {

const char* nameOf(Verdict verdict) {
  if (verdict == Verdict::fine) return "fine";
  return verdict == Verdict::limited ? "limited" : "broken";
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text + "  ";
}

}  // namespace

bool canDictate(const std::vector<Finding>& findings) {
  return std::ranges::none_of(findings, [](const Finding& each) { return each.verdict == Verdict::broken; });
}

std::string describe(const std::vector<Finding>& findings) {
  std::size_t serviceWidth = 0;
  for (const auto& each : findings) serviceWidth = std::max(serviceWidth, each.service.size());
  std::string lines;
  for (const auto& each : findings) {
    lines += padded(nameOf(each.verdict), 7) + padded(each.service, serviceWidth) + each.words + '\n';
  }
  return lines;
}

ExitCode runDoctor() {
  const auto findings = examineDesktop();
  print(describe(findings));
  return canDictate(findings) ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
