#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "recordings/Recording.h"
#include "rehearsal/Rehearsal.h"
#include "rehearsal/Story.h"

namespace tavelo {
namespace {

rehearsal::Story readStory(const std::string& file) {
  auto parsed = rehearsal::parseStory(readInput(file));
  if (const auto* error = std::get_if<std::string>(&parsed))
    throw CommandFailure(file + ": " + onOneLine(*error));
  return std::get<rehearsal::Story>(std::move(parsed));
}

std::vector<std::int16_t> readSamples(const std::string& file) {
  const auto opening = recordings::Recording::open(file);
  if (!opening.recording) throw CommandFailure(file + ": " + opening.failure);
  // It is played in real time, and all of it is kept in memory.
  constexpr std::size_t most = std::size_t{2} * 3600 * recordings::Recording::sampleRate;
  std::vector<std::int16_t> all;
  for (auto samples = opening.recording->read(); !samples.empty(); samples = opening.recording->read()) {
    all.insert(all.end(), samples.begin(), samples.end());
    if (all.size() > most) throw CommandFailure(file + ": " + language::say(language::words::tooLong));
  }
  if (!opening.recording->failure().empty()) throw CommandFailure(file + ": " + opening.recording->failure());
  return all;
}

std::optional<rehearsal::RehearsalAudio> readAudio(const RehearseOptions& options) {
  if (options.audio.empty()) return std::nullopt;
  rehearsal::RehearsalAudio audio;
  audio.samples = readSamples(options.audio);
  audio.speech = [](platform::MainQueue& mainQueue) { return makeCommandSpeech(mainQueue).speech; };
  audio.releaseAfter = platform::Seconds{options.releaseAfter};
  return audio;
}

void printOutcome(const rehearsal::RehearsalResult& result, bool wordsWereChecked) {
  print("\n");
  for (const auto& [name, text] : result.fields)
    print("field    " + onOneLine(name) + ": " + onOneLine(text) + "\n");
  for (const auto& text : result.history) print("history  " + onOneLine(text) + "\n");
  if (!result.failures.empty()) {
    print("Not as told:\n");
  } else {
    print(wordsWereChecked
              ? "As told.\n"
              : "Played with real sound; what the story expects of its own words was not checked.\n");
  }
  for (const auto& failure : result.failures) print("  " + onOneLine(failure) + "\n");
}

}  // namespace

ExitCode runRehearse(const RehearseOptions& options) {
  const auto story = readStory(options.story);
  const auto audio = readAudio(options);
  print(onOneLine(story.title) + "\n\n");
  // Nothing may be thrown through the main loop. If standard output fails here, the next `print` reports it.
  const auto result = rehearsal::rehearse(story, audio, [](const rehearsal::TimelineEntry& entry) {
    tryToPrint(onOneLine(entry.line()) + "\n");
  });
  printOutcome(result, !audio);
  return result.failures.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace tavelo
