// Prints what libvosk itself recognises in a WAV file. The program's own recognition must match it.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tests/platform/recognizer/ReferenceDecoding.h"

int main(int argc, char** argv) {
  std::vector<std::string> arguments{argv + 1, argv + argc};
  const bool lastOnly = std::erase(arguments, "--last") > 0;
  const bool withFinal = std::erase(arguments, "--final") > 0;
  const long chunkFrames = arguments.size() == 5 ? std::strtol(arguments[3].c_str(), nullptr, 10) : 0;
  const double silence = arguments.size() == 5 ? std::strtod(arguments[4].c_str(), nullptr) : 0;
  if (chunkFrames <= 0 || silence < 0) {
    std::cerr << "usage: reference_transcript [--last] [--final] LIBRARY MODEL WAV CHUNK_FRAMES "
                 "SILENCE_SECONDS\n"
                 "Prints the running transcript after each chunk, with --last only after the last one; with "
                 "--final also the answer to the end of the sound.\n";
    return 2;
  }
  try {
    const auto sound = tavelo::readWav(arguments[2]);
    auto transcripts =
        tavelo::referenceTranscripts(arguments[0], arguments[1], sound.sampleRate,
                                     tavelo::chunksOf(sound, static_cast<std::size_t>(chunkFrames), silence));
    const std::string final = transcripts.back();
    transcripts.pop_back();
    if (lastOnly && !transcripts.empty()) transcripts = {transcripts.back()};
    if (withFinal) transcripts.push_back(final);
    for (const auto& transcript : transcripts) std::cout << transcript << '\n';
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
