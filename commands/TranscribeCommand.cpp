#include <chrono>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "commands/CommandLoopWiring.h"
#include "commands/CommandWiring.h"
#include "commands/Commands.h"
#include "commands/InputOutput.h"
#include "commands/ProgressBar.h"
#include "commands/TranscriptionReport.h"
#include "commands/WaitingLine.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "recordings/Recording.h"
#include "recordings/Transcriber.h"
#include "recordings/Transcripts.h"
#include "text/TextNormalizer.h"

namespace tavelo {
namespace {

using language::say;
namespace words = language::words;

constexpr const char* locale = "vi_VN";
/// A large model on a slow disk may be loaded twice.
constexpr std::chrono::minutes loadLimit{5};

std::optional<recordings::Transcripts> readTranscripts(const std::string& file) {
  if (file.empty()) return std::nullopt;
  auto parsed = recordings::Transcripts::parse(readInput(file));
  if (const auto* error = std::get_if<std::string>(&parsed)) throw CommandFailure(file + ": " + *error);
  return std::get<recordings::Transcripts>(std::move(parsed));
}

/// Throws a `CommandFailure` if the recogniser cannot be used.
std::shared_ptr<platform::SpeechRecognizer> usableRecognizer(const ConfiguredSpeech& configured) {
  const auto failure = [&] {
    const WaitingLine line(say(words::loadingModel));
    return configured.failure(locale, loadLimit);
  }();
  auto recognizer = failure.empty() ? configured.speech->makeRecognizer(locale) : nullptr;
  if (!recognizer)
    throw CommandFailure(
        say(words::recognizerUnusable, {failure.empty() ? say(words::noRecognizer) : onOneLine(failure)}));
  return recognizer;
}

TranscribedFile transcribe(const std::string& file, recordings::Transcriber& transcriber,
                           const std::optional<recordings::Transcripts>& transcripts,
                           const std::function<void(double)>& progress) {
  TranscribedFile transcribed;
  transcribed.file = file;
  const auto fail = [&](std::string failure) {
    transcribed.failure = std::move(failure);
    return transcribed;
  };
  const auto said = transcripts ? transcripts->find(file) : std::nullopt;
  if (transcripts && !said) return fail(say(words::noWordsForIt));
  const auto opening = recordings::Recording::open(file);
  if (!opening.recording) return fail(opening.failure);
  auto& recording = *opening.recording;
  auto heard = transcriber.transcribe(
      recording, [&](platform::Seconds given) { progress(given / recording.duration()); });
  if (!heard.failure.empty()) return fail(std::move(heard.failure));
  transcribed.sound = heard.sound;
  transcribed.took = heard.took;
  transcribed.text = TextNormalizer::normalize(heard.raw);
  transcribed.raw = std::move(heard.raw);
  if (said) transcribed.errors = recordings::compareWords(*said, transcribed.raw);
  return transcribed;
}

/// "2 of 5, " when one is done; empty if there is only one.
std::string place(std::size_t done, std::size_t all) {
  return all == 1 ? std::string{} : say(words::placeAmong, {std::to_string(done + 1), std::to_string(all)});
}

}  // namespace

ExitCode runTranscribe(const TranscribeOptions& options) {
  const auto transcripts = readTranscripts(options.against);
  CommandLoop loop;
  const auto configured = makeCommandSpeech(loop.mainQueue());
  recordings::Transcriber transcriber{usableRecognizer(configured), loop.mainQueue(),
                                      [&](const auto& condition) { loop.runUntil(condition); }};
  ProgressBar bar;
  bool failed = false;
  std::vector<TranscribedFile> files;
  const auto count = static_cast<double>(options.files.size());
  for (const auto& file : options.files) {
    const auto before = static_cast<double>(files.size());
    const auto& transcribed = files.emplace_back(transcribe(file, transcriber, transcripts, [&](double part) {
      bar.show((before + part) / count, place(files.size(), options.files.size()) + onOneLine(file));
    }));
    bar.clear();
    if (!transcribed.failure.empty()) {
      failed = true;
      std::fprintf(stderr, "tavelo: %s: %s\n", onOneLine(file).c_str(),
                   onOneLine(transcribed.failure).c_str());
    } else if (!options.json) {
      print(describe(transcribed));
    }
  }
  if (options.json) {
    print(toJson(files) + "\n");
  } else if (files.size() > 1) {
    print(describeAll(files));
  }
  return failed ? ExitCode::failed : ExitCode::done;
}

}  // namespace tavelo
