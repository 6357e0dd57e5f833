#include <cstdlib>
#include <string>

#include <unistd.h>

#include "commands/Commands.h"
#include "commands/Diagnosis.h"
#include "commands/DoctorReport.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "platform/Environment.h"

namespace tavelo {
namespace {

using platform::environmentVariable;

/// In English, whatever the user's language: for people who help.
DoctorReport makeReport(const std::string& version) {
  language::use(language::Language::english);
  // The recogniser process asks the environment.
  ::setenv("LC_ALL", "C.UTF-8", 1);
  return {.version = version,
          .session = sessionKind(),
          .desktop = environmentVariable("XDG_CURRENT_DESKTOP"),
          .home = environmentVariable("HOME"),
          .user = environmentVariable("USER"),
          .findings = examineDesktop(false)};
}

}  // namespace

ExitCode runDoctor(const DoctorOptions& options) {
  if (options.json) {
    const auto report = makeReport(options.version);
    print(toJson(report) + "\n");
    return canDictate(report.findings) ? ExitCode::done : ExitCode::failed;
  }
  const auto findings = examineDesktop(true);
  print(describe(findings));
  return canDictate(findings) ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
