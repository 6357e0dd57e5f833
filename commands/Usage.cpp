#include "commands/Usage.h"

#include <CLI/CLI.hpp>

#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

/// What is wrong, without the library's words, which are English: its kinds of errors say enough, and each
/// names the option at its beginning or the argument at its end.
std::string whatIsWrong(const CLI::Error& error) {
  const std::string said = error.what();
  const auto name = onOneLine(said.substr(0, said.find_first_of(": ")));
  const auto last = onOneLine(said.substr(said.rfind(": ") == std::string::npos ? 0 : said.rfind(": ") + 2));
  switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::ExtrasError:
      return say(words::usageUnexpected, {last});
    case CLI::ExitCodes::RequiredError:
      return say(words::usageMissing, {name});
    case CLI::ExitCodes::ValidationError:
    case CLI::ExitCodes::ArgumentMismatch:
    case CLI::ExitCodes::ConversionError:
      return say(words::usageBadValue, {name});
    case CLI::ExitCodes::ExcludesError:
      return say(words::usageConflict, {name});
    case CLI::ExitCodes::RequiresError:
      return say(words::usageNeeds, {name});
    default:
      return say(words::usageWrong);
  }
}

}  // namespace

void speakCurrentLanguage(CLI::App& app) {
  app.set_help_flag("-h,--help", say(words::aboutHelp));
  app.option_defaults()->group(say(words::optionsLabel));
  app.get_help_ptr()->group(say(words::optionsLabel));
  const auto formatter = app.get_formatter();
  formatter->column_width(36);
  if (language::current() == language::Language::english) return;
  for (const auto* text :
       {&words::usageLabel, &words::optionsInUsage, &words::subcommandInUsage, &words::requiredLabel,
        &words::positionalsLabel, &words::needsLabel, &words::excludesLabel}) {
    std::dynamic_pointer_cast<CLI::Formatter>(formatter)->label(std::string(text->english), say(*text));
  }
  app.failure_message(
      [](const CLI::App*, const CLI::Error& error) { return say(words::seeHelp, {whatIsWrong(error)}); });
}

void groupCommands(CLI::App& app) {
  for (auto* command : app.get_subcommands({})) {
    command->group(say(words::subcommandsLabel));
    command->get_help_ptr()->group(say(words::optionsLabel));
  }
}

}  // namespace tavelo
