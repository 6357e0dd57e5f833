// Stands in for the recogniser process: ScriptedRecognizer --model FOLDER. A sample above zero is a word of
// that number, -1 closes the segment. The file "fault" in the folder has lines "WHEN KIND TIMES": at which
// word, or 0 while loading or -2 before, what goes wrong, and how often. The file "starts" gets a line for
// each start. It is a slow one: it takes sound only when no more comes. Sound that is more than 4 MiB ahead
// ends it.

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace {

std::string folder;
std::string dictationNumber;

void say(const std::string& text) { std::cout << text << std::flush; }

/// Whether the fault at that word may still happen; counts it.
bool mayHappen(int word, int times) {
  const auto file = folder + "/faults" + std::to_string(word);
  std::ifstream before{file};
  const std::string marks{std::istreambuf_iterator<char>{before}, {}};
  std::ofstream{file, std::ios::app} << '.';
  return static_cast<int>(marks.size()) < times;
}

void happen(const std::string& kind) {
  std::cerr << "about to " << kind << std::endl;
  if (kind == "exit") _exit(255);
  if (kind == "fail") {
    say("{\"state\":\"failed\",\"reason\":\"bad tokens\"}\n");
    _exit(1);
  }
  if (kind == "stop") std::raise(SIGSTOP);
  if (kind == "hang") pause();
  if (kind == "rubbish") say("{\"dictation\":\n");
  if (kind == "half") {
    say("{\"dictation\":1,");
    _exit(0);
  }
  if (kind == "far") say("{\"dictation\":" + dictationNumber + ",\"closed\":\"a\",\"until\":99999}\n");
  while (kind == "flood") say("{\"dictation\":1,\"text\":\"" + std::string(60'000, 'a') + "\"}\n");
  while (kind == "endless") say(std::string(60'000, 'a'));
}

void maybeFail(int when) {
  std::ifstream faults{folder + "/fault"};
  std::string kind;
  for (int word = 0, times = 0; faults >> word >> kind >> times;)
    if (word == when && mayHappen(word, times)) happen(kind);
}

std::uint32_t number(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i > 0; --i) value = value << 8 | static_cast<std::uint8_t>(bytes[at + i - 1]);
  return value;
}

class Dictation {
 public:
  void begin(std::uint32_t id) { *this = Dictation{}, dictationNumber = std::to_string(id); }
  void hear(const std::string& payload) {
    for (std::size_t i = 0; i + 1 < payload.size(); i += 2, ++samples_) {
      const auto sample =
          static_cast<std::int16_t>(static_cast<std::uint8_t>(payload[i]) | payload[i + 1] << 8);
      if (sample < 0) close(samples_ + 1);
      if (sample <= 0) continue;
      maybeFail(sample);
      text_ += (text_.empty() ? "" : " ") + std::to_string(sample);
      line("\"text\":\"" + text_ + "\"");
    }
    constexpr std::uint64_t mostAhead = std::uint64_t{4} * 1024 * 1024 / sizeof(std::int16_t);
    if (samples_ - taken_ > mostAhead) _exit(255);
  }
  void take() {
    if (samples_ - taken_ < 32'000) return;
    taken_ = samples_;
    line("\"taken\":" + std::to_string(taken_));
  }
  void end() {
    close(samples_);
    line("\"final\":true");
  }

 private:
  void close(std::uint64_t until) {
    line("\"closed\":\"" + text_ + "\",\"until\":" + std::to_string(until));
    text_.clear();
  }
  void line(const std::string& members) const {
    say("{\"dictation\":" + dictationNumber + "," + members + "}\n");
  }

  std::string text_;
  std::uint64_t samples_ = 0;
  std::uint64_t taken_ = 0;
};

bool isIdle() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return std::cin.rdbuf()->in_avail() <= 0 && poll(&input, 1, 20) == 0;
}

}  // namespace

int main(int, char** argv) {
  folder = argv[2];
  std::ios::sync_with_stdio(false);
  std::ofstream{folder + "/starts", std::ios::app} << getpid() << '\n';
  maybeFail(-2);
  say("{\"state\":\"loading\"}\n");
  maybeFail(0);
  say("{\"state\":\"ready\",\"engine\":\"scripted\",\"version\":\"2.0\"}\n");
  Dictation dictation;
  for (std::string head(5, ' '); std::cin.read(head.data(), 5);) {
    std::string payload(number(head, 1), ' ');
    std::cin.read(payload.data(), static_cast<std::streamsize>(payload.size()));
    if (head[0] == 'B') dictation.begin(number(payload, 0));
    if (head[0] == 'S') dictation.hear(payload);
    if (head[0] == 'E') dictation.end();
    if (isIdle()) dictation.take();
  }
}
