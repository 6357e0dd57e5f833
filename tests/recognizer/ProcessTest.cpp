#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "tests/recognizer/ModelFiles.h"
#include "tests/recognizer/RecognizerProcess.h"

namespace tavelo::recognition {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

constexpr const char* fake = TAVELO_FAKE_SHERPA;
constexpr const char* loading = R"({"state":"loading"})";
constexpr const char* ready = R"({"state":"ready","engine":"sherpa-onnx","version":"1.13.8"})";

std::string sound(double seconds) { return std::string(static_cast<std::size_t>(seconds * 16000) * 2, '\0'); }

TEST(RecognizerProcess, DecodesADictationAndEndsWithItsInput) {
  const ModelFiles model;
  RecognizerProcess process{model.folder(), fake};
  EXPECT_THAT(process.linesUntil("ready"), ElementsAre(loading, ready));
  process.begin(7);
  process.send('S', sound(1));
  EXPECT_EQ(process.line(), R"({"dictation":7,"text":"độ dài 10"})");
  process.send('E');
  EXPECT_THAT(process.linesUntil("final"),
              ElementsAre(R"({"dictation":7,"closed":"độ dài 16","until":16000})",
                          R"({"dictation":7,"final":true})"));
  // Too short for the model, which does not see it.
  process.begin(8);
  process.send('S', sound(0.1));
  process.send('E');
  EXPECT_THAT(process.linesUntil("final"),
              ElementsAre(R"({"dictation":8,"closed":"","until":1600})", R"({"dictation":8,"final":true})"));
  process.closeInput();
  EXPECT_EQ(process.status(), 0);
}

TEST(RecognizerProcess, TellsAllAlongHowMuchSoundItHasTaken) {
  const ModelFiles model;
  RecognizerProcess process{model.folder(), fake};
  process.begin(1);
  for (int i = 0; i < 60; ++i) process.send('S', sound(0.5));
  process.send('E');
  std::uint64_t taken = 0;
  for (const auto& line : process.linesUntil("final")) {
    const auto at = line.find("\"taken\":");
    if (at == std::string::npos) continue;
    const auto now = std::stoull(line.substr(at + 8));
    EXPECT_GT(now, taken);
    taken = now;
  }
  // It need not tell of the last ten seconds.
  EXPECT_GE(taken, 20U * 16000);
  EXPECT_LE(taken, 30U * 16000);
}

TEST(RecognizerProcess, DecodesAStreamWithAModelThatIsMadeForIt) {
  const ModelFiles model;
  model.write("encoder.int8.onnx",
              onnx({{"decode_chunk_len", "32"}, {"T", "45"}, {"model_type", "zipformer2"}}));
  RecognizerProcess process{model.folder(), fake};
  process.linesUntil("ready");
  process.begin(1);
  process.send('S', sound(1));
  EXPECT_EQ(process.line(), R"({"dictation":1,"text":"dòng 15"})") << "half a second of silence is before it";
  process.send('S', sound(0.5));
  EXPECT_EQ(process.line(), R"({"dictation":1,"closed":"dòng 20","until":24000})");
  process.send('S', sound(0.5));
  EXPECT_EQ(process.line(), R"({"dictation":1,"text":"dòng 5"})");
  process.send('E');
  EXPECT_THAT(process.linesUntil("final"), ElementsAre(R"({"dictation":1,"closed":"dòng 11","until":32000})",
                                                       R"({"dictation":1,"final":true})"));
}

TEST(RecognizerProcess, SaysOnceWhyItCannotLoad) {
  struct Row {
    std::map<std::string, std::string> environment;
    std::string library;
    const char* reason;
  };
  const ModelFiles model;
  const std::vector<Row> rows{
      {{}, "/nowhere/lib.so", "/nowhere/lib.so: cannot open"},
      {{}, "libm.so.6", "has no SherpaOnnxGetVersionStr"},
      {{{"FAKE_SHERPA_VERSION", "1.12.19"}}, fake, "sherpa-onnx 1.12.19 is too old"},
      {{{"FAKE_SHERPA_VERSION", "new"}}, fake, "sherpa-onnx new is too old"},
      {{{"FAKE_SHERPA_VERSION", "1.14.0"}, {"FAKE_SHERPA", "moved"}}, fake, "another layout"},
      {{{"FAKE_SHERPA_VERSION", "2.0.1"}, {"FAKE_SHERPA", "moved"}}, fake, "another layout"},
      {{{"FAKE_SHERPA", "refuse"}}, fake, "it refuses the files"},
  };
  for (const auto& row : rows) {
    RecognizerProcess process{model.folder(), row.library, row.environment};
    EXPECT_EQ(process.line(), loading);
    EXPECT_THAT(process.line(),
                testing::AllOf(HasSubstr(R"({"state":"failed","reason":")"), HasSubstr(row.reason)));
    process.closeInput();
    EXPECT_EQ(process.status(), 1);
  }
}

TEST(RecognizerProcess, UsesANewerLibraryWhoseLayoutItCouldConfirm) {
  const ModelFiles model;
  RecognizerProcess process{model.folder(), fake, {{"FAKE_SHERPA_VERSION", "1.14.2"}}};
  EXPECT_THAT(process.linesUntil("ready").back(), HasSubstr("1.14.2"));
}

TEST(RecognizerProcess, EndsWithItsInputWhateverTheLibraryDoes) {
  const ModelFiles model;
  RecognizerProcess loads{model.folder(), fake, {{"FAKE_SHERPA", "hang"}}};
  EXPECT_EQ(loads.line(), loading);
  loads.begin(1);
  // More than four megabytes, so that it has stopped reading; the rest fits into the pipe.
  for (int i = 0; i < 133; ++i) loads.send('S', sound(1));
  loads.closeInput();
  EXPECT_EQ(loads.status(), 0);

  RecognizerProcess decodes{model.folder(), fake, {{"FAKE_SHERPA", "stop"}}};
  decodes.linesUntil("ready");
  decodes.begin(1);
  decodes.send('S', sound(2));
  decodes.send('E');
  decodes.closeInput();
  EXPECT_EQ(decodes.status(), 0);
}

TEST(RecognizerProcess, SurvivesExceptionsAndDiesAloneOtherwise) {
  const ModelFiles model;
  RecognizerProcess throws{model.folder(), fake, {{"FAKE_SHERPA", "throw"}}};
  throws.linesUntil("ready");
  throws.begin(1);
  throws.send('S', sound(2));
  EXPECT_EQ(throws.linesUntil("failed").back(), R"({"dictation":1,"failed":"bad sound"})");
  throws.begin(2);
  throws.send('E');
  EXPECT_EQ(throws.line(), R"({"dictation":2,"final":true})");
  throws.send('X');
  EXPECT_EQ(throws.status(), 2);

  RecognizerProcess exits{model.folder(), fake, {{"FAKE_SHERPA", "exit"}}};
  EXPECT_EQ(exits.status(), 255);
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

struct Count {
  int recordings = 0;
  int heard = 0;
  int exact = 0;
};

/// Decodes the recordings of a folder with a transcripts.tsv (16 kHz, mono, 44 bytes of head).
Count countTexts(RecognizerProcess& process, const std::string& folder) {
  std::ifstream transcripts{folder + "/transcripts.tsv"};
  Count count;
  for (std::string line; std::getline(transcripts, line);) {
    const auto tab = line.find('\t');
    std::ifstream file{folder + "/" + line.substr(0, tab) + ".wav", std::ios::binary};
    std::stringstream whole;
    whole << file.rdbuf();
    process.begin(static_cast<std::uint32_t>(++count.recordings));
    process.send('S', whole.str().substr(44));
    process.send('E');
    std::string text;
    for (const auto& each : process.linesUntil("final")) {
      const std::string key = R"("closed":")";
      const auto at = each.find(key);
      if (at == std::string::npos) continue;
      const auto closed = each.substr(at + key.size(), each.find('"', at + key.size()) - at - key.size());
      text += (text.empty() || closed.empty() ? "" : " ") + closed;
    }
    if (!text.empty()) ++count.heard;
    if (text == line.substr(tab + 1)) ++count.exact;
  }
  return count;
}

TEST(RealRecognizer, HearsEveryRecordingOfTheClips) {
  const auto library = variable("TAVELO_SHERPA_LIBRARY");
  const auto model = variable("TAVELO_MODEL");
  const auto clips = variable("TAVELO_CLIPS");
  if (library.empty() || model.empty() || clips.empty())
    GTEST_SKIP() << "needs TAVELO_SHERPA_LIBRARY, TAVELO_MODEL and TAVELO_CLIPS";
  RecognizerProcess process{model, library};
  ASSERT_THAT(process.linesUntil("ready").back(), HasSubstr("sherpa-onnx"));
  const auto [recordings, heard, exact] = countTexts(process, clips);
  EXPECT_GT(recordings, 0);
  EXPECT_EQ(exact, recordings);
}

TEST(RealRecognizer, HearsWordsWithLibvosk) {
  const auto library = variable("TAVELO_VOSK_LIBRARY");
  const auto model = variable("TAVELO_VOSK_MODEL");
  const auto clips = variable("TAVELO_CLIPS");
  if (library.empty() || model.empty() || clips.empty())
    GTEST_SKIP() << "needs TAVELO_VOSK_LIBRARY, TAVELO_VOSK_MODEL and TAVELO_CLIPS";
  RecognizerProcess process{model, library};
  ASSERT_THAT(process.linesUntil("ready").back(), HasSubstr("vosk"));
  const auto [recordings, heard, exact] = countTexts(process, clips);
  EXPECT_EQ(heard, recordings);
  EXPECT_GT(exact, 0) << "of " << recordings;
}

}  // namespace
}  // namespace tavelo::recognition
