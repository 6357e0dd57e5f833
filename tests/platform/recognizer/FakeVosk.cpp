// A library with libvosk's C interface that hears no word before the end of the sound. The file "script" in
// the model folder says more:
//
//   load fail         the model is refused
//   load gate         the model waits until somebody reads the FIFO "waiting" in its folder
//   partial JSON      the answer to sound before its end
//   final JSON        the answer to the end of the sound

#include <filesystem>
#include <fstream>
#include <string>

struct VoskModel {
  bool loads = true;
  std::string partialAnswer = R"({"partial": ""})";
  std::string finalAnswer = R"({"text": ""})";
};

extern "C" {

void vosk_set_log_level(int) {}

VoskModel* vosk_model_new(const char* folder) {
  static VoskModel model;
  model = {};
  const std::filesystem::path files = folder;
  std::ifstream script{files / "script"};
  for (std::string line; std::getline(script, line);) {
    if (line == "load fail") model.loads = false;
    if (line == "load gate") std::ofstream{files / "waiting"};
    if (line.starts_with("partial ")) model.partialAnswer = line.substr(8);
    if (line.starts_with("final ")) model.finalAnswer = line.substr(6);
  }
  return model.loads ? &model : nullptr;
}
void vosk_model_free(VoskModel*) {}

// A recogniser has nothing of its own.
VoskModel* vosk_recognizer_new(VoskModel* model, float) { return model; }
void vosk_recognizer_free(VoskModel*) {}
int vosk_recognizer_accept_waveform(VoskModel*, const char*, int) { return 0; }
const char* vosk_recognizer_result(VoskModel*) { return R"({"text": ""})"; }
const char* vosk_recognizer_partial_result(VoskModel* model) { return model->partialAnswer.c_str(); }
const char* vosk_recognizer_final_result(VoskModel* model) { return model->finalAnswer.c_str(); }
}
