// A library with libvosk's C interface that answers from a script, the file "script" in the model folder:
//
//   load fail         the model is refused
//   load gate         the model loads once the gate opens
//   recognizer fail   no recogniser can be made
//   0 JSON            the next sound does not end the utterance; JSON is the partial result
//   1 JSON            the next sound ends the utterance; JSON is the result
//   -1                the next sound fails
//   gate ANSWER       one of the three answers above, once the gate opens
//   final JSON        the answer to the end of the sound
//
// At a gate the library writes a byte to the FIFO "waiting", then reads one from the FIFO "gate". It logs its
// calls to the file "calls".

#include <cstdint>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <unistd.h>

struct VoskModel {
  std::filesystem::path folder;
};

struct VoskRecognizer {
  VoskModel* model = nullptr;
  std::deque<std::string> answers;
  std::string finalAnswer = R"({"text": ""})";
  std::string reply;
};

namespace {

bool startsWith(const std::string& line, const char* word) { return line.rfind(word, 0) == 0; }

void log(const VoskModel& model, const std::string& call) {
  std::ofstream{model.folder / "calls", std::ios::app} << call << '\n';
}

void passGate(const VoskModel& model) {
  char byte = 0;
  const int waiting = open((model.folder / "waiting").c_str(), O_WRONLY);
  const int gate = open((model.folder / "gate").c_str(), O_RDONLY);
  if (write(waiting, &byte, 1) != 1 || read(gate, &byte, 1) != 1) log(model, "gate broken");
  close(waiting);
  close(gate);
}

template <class Visit>
void forEachLine(const VoskModel& model, Visit visit) {
  std::ifstream script{model.folder / "script"};
  for (std::string line; std::getline(script, line);) visit(line);
}

}  // namespace

extern "C" {

void vosk_set_log_level(int) {}

VoskModel* vosk_model_new(const char* folder) {
  auto* model = new VoskModel{folder};
  bool loads = true;
  log(*model, "load");
  forEachLine(*model, [&](const std::string& line) {
    if (line == "load gate") passGate(*model);
    if (line == "load fail") loads = false;
  });
  if (loads) return model;
  delete model;
  return nullptr;
}

void vosk_model_free(VoskModel* model) {
  log(*model, "unload");
  delete model;
}

VoskRecognizer* vosk_recognizer_new(VoskModel* model, float rate) {
  log(*model, "recognizer " + std::to_string(static_cast<int>(rate)));
  auto* recognizer = new VoskRecognizer;
  recognizer->model = model;
  bool works = true;
  forEachLine(*model, [&](const std::string& line) {
    if (line == "recognizer fail") works = false;
    if (startsWith(line, "final ")) recognizer->finalAnswer = line.substr(6);
    if (startsWith(line, "0 ") || startsWith(line, "1 ") || startsWith(line, "-1") ||
        startsWith(line, "gate "))
      recognizer->answers.push_back(line);
  });
  if (works) return recognizer;
  delete recognizer;
  return nullptr;
}

void vosk_recognizer_free(VoskRecognizer* recognizer) { delete recognizer; }

int vosk_recognizer_accept_waveform(VoskRecognizer* recognizer, const char* data, int bytes) {
  std::int16_t first = 0;
  if (bytes >= 2) std::memcpy(&first, data, 2);
  log(*recognizer->model, "accept " + std::to_string(bytes) + " bytes from " + std::to_string(first));
  std::string answer = R"(0 {"text": ""})";
  if (!recognizer->answers.empty()) {
    answer = recognizer->answers.front();
    recognizer->answers.pop_front();
  }
  if (startsWith(answer, "gate ")) {
    passGate(*recognizer->model);
    answer.erase(0, 5);
  }
  if (answer == "-1") return -1;
  recognizer->reply = answer.substr(2);
  return answer.front() - '0';
}

const char* vosk_recognizer_result(VoskRecognizer* recognizer) { return recognizer->reply.c_str(); }
const char* vosk_recognizer_partial_result(VoskRecognizer* recognizer) { return recognizer->reply.c_str(); }
const char* vosk_recognizer_final_result(VoskRecognizer* recognizer) {
  log(*recognizer->model, "final");
  return recognizer->finalAnswer.c_str();
}
}
