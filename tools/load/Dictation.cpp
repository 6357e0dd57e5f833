#include "tools/load/Dictation.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace tavelo::load {

Dictation::Dictation(platform::MainQueue& mainQueue, const platform::Clock& clock, platform::Speech& speech,
                     SoundPlayer& player)
    : mainQueue_(mainQueue), clock_(clock), speech_(speech), player_(player) {}

void Dictation::begin(Done done) {
  done_ = std::move(done);
  const auto recognizer = speech_.makeRecognizer("vi_VN");
  if (!recognizer) {
    outcome_.error = "no recogniser";
    return finish();
  }
  const auto request = speech_.makeAudioBufferRecognitionRequest();
  request->setShouldReportPartialResults(true);
  begun_ = clock_.uptime();
  task_ = recognizer->recognitionTask(request,
                                      [self = shared_from_this()](const Result& result, const Error& error) {
                                        self->receive(result, error);
                                      });
  player_.play(request, [self = shared_from_this()](platform::Uptime ended) {
    self->mainQueue_.async([self, ended] { self->soundEnded_ = ended; });
  });
}

void Dictation::receive(const Result& result, const Error& error) {
  if (answered_) {
    outcome_.error = "answered again";
    return;
  }
  if (result) {
    outcome_.text = result->formattedString;
    const auto after = clock_.uptime() - begun_;
    for (auto count = wordsOf(outcome_.text).size(); outcome_.wordsAfter.size() < count;)
      outcome_.wordsAfter.push_back(after);
  }
  if (error) outcome_.error = error->localizedDescription;
  if (!error && !(result && result->isFinal)) return;
  answered_ = true;
  if (soundEnded_) outcome_.finalAfter = clock_.uptime() - *soundEnded_;
  // A second answer would arrive before this.
  mainQueue_.async([self = shared_from_this()] { self->finish(); });
}

void Dictation::finish() {
  task_.reset();
  std::exchange(done_, {})(outcome_);
}

std::vector<std::string> wordsOf(const std::string& transcript) {
  std::istringstream stream{transcript};
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(std::move(word));
  return words;
}

std::size_t lostWords(const std::vector<std::string>& expected, const std::vector<std::string>& heard) {
  // The longest common subsequence, a row of its table at a time.
  std::vector<std::size_t> common(heard.size() + 1);
  for (const auto& word : expected) {
    std::size_t diagonal = 0;
    for (std::size_t i = 0; i < heard.size(); ++i) {
      const auto above = common[i + 1];
      common[i + 1] = word == heard[i] ? diagonal + 1 : std::max(above, common[i]);
      diagonal = above;
    }
  }
  return expected.size() - common.back();
}

}  // namespace tavelo::load
