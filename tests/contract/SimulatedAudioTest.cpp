#include <chrono>
#include <cstdint>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/BufferedRecognitionRequest.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/WavFile.h"

namespace tavelo::simulated {
namespace {

using platform::AudioBuffer;
using platform::Seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

std::string littleEndian(std::uint32_t value, int bytes) {
  std::string result;
  for (int i = 0; i < bytes; ++i) result += static_cast<char>(value >> (8 * i) & 0xFF);
  return result;
}

std::string chunk(const std::string& name, const std::string& body) {
  return name + littleEndian(static_cast<std::uint32_t>(body.size()), 4) + body +
         std::string(body.size() % 2, '\0');
}

std::string format(std::uint32_t kind, std::uint32_t channels, std::uint32_t rate, std::uint32_t bits) {
  return chunk("fmt ", littleEndian(kind, 2) + littleEndian(channels, 2) + littleEndian(rate, 4) +
                           littleEndian(rate * channels * bits / 8, 4) +
                           littleEndian(channels * bits / 8, 2) + littleEndian(bits, 2));
}

std::string wav(const std::string& chunks) {
  return "RIFF" + littleEndian(static_cast<std::uint32_t>(chunks.size() + 4), 4) + "WAVE" + chunks;
}

const std::string plainFormat = format(1, 1, 16000, 16);

TEST(WavFile, ReadsSamplesPastUnknownChunks) {
  const WavFile file =
      WavFile::parse(wav(chunk("LIST", "odd") + plainFormat + chunk("data", "\x01\x02\xff\xff")));
  EXPECT_EQ(file.error, std::nullopt);
  EXPECT_THAT(file.samples, ElementsAre(0x0201, -1));
}

TEST(WavFile, SaysWhatIsWrong) {
  const std::string data = chunk("data", "abcd");
  const std::pair<std::string, std::string> cases[] = {
      {"", "not a WAV file"},
      {"RIFX1234WAVE", "not a WAV file"},
      {wav(""), "no format in it"},
      {wav(plainFormat), "no sound in it"},
      {wav(data + plainFormat), "the sound comes before its format"},
      {wav(chunk("fmt ", "short") + data), "the format chunk is cut short"},
      {wav(format(3, 1, 16000, 16) + data), "not PCM"},
      {wav(format(1, 2, 16000, 16) + data), "not one channel but 2"},
      {wav(format(1, 1, 44100, 16) + data), "not 16000 Hz but 44100"},
      {wav(format(1, 1, 16000, 8) + data), "not 16 bits a sample but 8"},
      {wav(plainFormat + chunk("data", "abc")), "half a sample at the end"},
      {wav(plainFormat + "data" + littleEndian(0xFFFFFFFF, 4) + "ab"), "a chunk is cut short"},
  };
  for (const auto& [bytes, error] : cases) EXPECT_EQ(WavFile::parse(bytes).error, error);
  // A good file cut short anywhere is refused.
  const std::string good = wav(plainFormat + data);
  for (std::size_t length = 0; length < good.size(); ++length) {
    EXPECT_NE(WavFile::parse(good.substr(0, length)).error, std::nullopt) << length;
  }
}

TEST(SimulatedMicrophones, DeliverBuffersWhenTheirLastFrameWasHeard) {
  SimulatedDesktop desktop;
  std::vector<std::int16_t> played(2500);
  std::iota(played.begin(), played.end(), std::int16_t{1});
  desktop.microphone().play(played);
  const auto engine = platform::current().audio.makeEngine();
  std::vector<std::int16_t> heard;
  std::vector<platform::Uptime> times;
  bool onMain = false;
  desktop.advance(Seconds{1});
  engine->installTap(0, 1024, engine->inputFormat(0), [&](const AudioBuffer& buffer) {
    onMain = onMain || platform::current().mainQueue.isMainThread();
    heard.insert(heard.end(), buffer.samples.begin(), buffer.samples.end());
    times.push_back(platform::current().clock.uptime());
  });
  EXPECT_FALSE(engine->start());
  desktop.advance(Seconds{0.256});
  engine->stop();
  desktop.advance(Seconds{1});
  EXPECT_FALSE(onMain);
  EXPECT_THAT(times, ElementsAre(1064ms, 1128ms, 1192ms, 1256ms));
  played.resize(4096, 0);
  EXPECT_EQ(heard, played);
  EXPECT_EQ(desktop.microphone().lastSampleDelivered(), 1192ms);
}

TEST(SimulatedMicrophones, RealTimeCaptureIsAThreadThatStopsWithTheEngine) {
  SimulatedDesktop desktop{{.time = DesktopOptions::Time::realTime}};
  desktop.microphone().play(std::vector<std::int16_t>(40, 7));
  const auto engine = platform::current().audio.makeEngine();
  int onMain = 0;
  int buffers = 0;
  engine->installTap(0, 16, engine->inputFormat(0), [&](const AudioBuffer& buffer) {
    onMain += platform::current().mainQueue.isMainThread() ? 1 : 0;
    buffers += buffer.samples.size() == 16 ? 1 : 100;
  });
  EXPECT_FALSE(engine->start());
  bool finished = false;
  desktop.observe(
      [&](const WorldEvent& event) { finished = finished || event.text == "last sample delivered"; });
  EXPECT_TRUE(desktop.loop().runUntil([&] { return finished; }, Seconds{10}));
  engine->stop();
  const int atStop = buffers;
  desktop.advance(Seconds{0.005});
  EXPECT_EQ(buffers, atStop);
  EXPECT_GE(buffers, 3);
  EXPECT_EQ(onMain, 0);
}

TEST(SimulatedMicrophones, StartFailsWithItsText) {
  SimulatedDesktop desktop;
  const auto engine = platform::current().audio.makeEngine();
  desktop.microphone().setStartFailure("Thiết bị đang bận.");
  EXPECT_EQ(engine->start()->localizedDescription, "Thiết bị đang bận.");
  EXPECT_FALSE(desktop.microphone().isCapturing());
  desktop.microphone().setStartFailure(std::nullopt);
  EXPECT_FALSE(engine->start());
}

TEST(SimulatedPermissions, AnswersComeWhenThePersonGivesThemOnAnotherThread) {
  using When = PromptAnswer::When;
  using platform::CaptureAuthorizationStatus;
  SimulatedDesktop desktop;
  platform::Audio& audio = platform::current().audio;
  std::vector<std::string> answers;
  const auto ask = [&](const PromptAnswer& answer) {
    desktop.audio().setAuthorization(CaptureAuthorizationStatus::notDetermined);
    desktop.audio().setPromptAnswer(answer);
    audio.requestCaptureAccess([&](bool granted) {
      answers.push_back(std::string{granted ? "yes" : "no"} +
                        (platform::current().mainQueue.isMainThread() ? " main" : " foreign"));
    });
  };
  ask({.granted = false, .when = When::later, .after = Seconds{2}});
  desktop.advance(Seconds{1.9});
  EXPECT_THAT(answers, IsEmpty());
  desktop.advance(Seconds{0.1});
  EXPECT_THAT(answers, ElementsAre("no foreign"));
  EXPECT_EQ(audio.captureAuthorizationStatus(), CaptureAuthorizationStatus::denied);
  ask({.when = When::never});
  desktop.advance(Seconds{1000});
  EXPECT_EQ(answers.size(), 1U);
}

TEST(SimulatedPermissions, SpeechAnswerNeverComesInsideTheCall) {
  SimulatedDesktop desktop;
  std::vector<bool> onMain;
  platform::current().speech.requestAuthorization([&](platform::SpeechAuthorizationStatus status) {
    EXPECT_EQ(status, platform::SpeechAuthorizationStatus::authorized);
    onMain.push_back(platform::current().mainQueue.isMainThread());
  });
  EXPECT_THAT(onMain, IsEmpty());
  desktop.advance(Seconds{0});
  EXPECT_THAT(onMain, ElementsAre(false));
  EXPECT_EQ(desktop.speech().prompts(), 0);
}

class SimulatedRecognition : public testing::Test {
 protected:
  std::shared_ptr<platform::SpeechRecognitionTask> start(bool partialResults = true) {
    platform::Speech& speech = platform::current().speech;
    auto request = speech.makeAudioBufferRecognitionRequest();
    request->setShouldReportPartialResults(partialResults);
    request->append({{16000, 1}, std::vector<std::int16_t>(320)});
    return speech.makeRecognizer("vi_VN")->recognitionTask(
        request, [this](const auto& result, const auto& error) {
          if (result) results_.push_back(result->formattedString + (result->isFinal ? "." : ""));
          if (error) results_.push_back("!" + error->localizedDescription);
        });
  }

  SimulatedDesktop desktop_;
  std::vector<std::string> results_;
  const RecognitionScript script_{{RecognitionStep::partial(Seconds{0.5}, "xin"),
                                   RecognitionStep::finalResult(Seconds{1}, "xin chào"),
                                   RecognitionStep::failure(Seconds{1.5}, "too late")}};
};

TEST_F(SimulatedRecognition, FollowsItsScriptUntilTheEnd) {
  desktop_.speech().addScript(script_);
  start();
  EXPECT_FALSE(desktop_.speech().requests()[0]->state().released);
  desktop_.advance(Seconds{0.5});
  EXPECT_THAT(results_, ElementsAre("xin"));
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, ElementsAre("xin", "xin chào."));
  EXPECT_EQ(desktop_.speech().requests()[0]->state().frames, 320U);
  EXPECT_TRUE(desktop_.speech().requests()[0]->state().released);
  EXPECT_EQ(platform::current().speech.makeRecognizer("de_DE"), nullptr);
}

TEST_F(SimulatedRecognition, CancelEndsItUnlessResultsAreOnTheirWay) {
  desktop_.speech().addScript(script_);
  RecognitionScript late = script_;
  late.answersAfterCancel = true;
  desktop_.speech().addScript(late);
  start()->cancel();
  EXPECT_TRUE(desktop_.speech().requests()[0]->state().released);
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, IsEmpty());
  std::vector<std::string> events;
  desktop_.observe([&](const WorldEvent& event) { events.push_back(event.text); });
  start(false)->cancel();
  desktop_.advance(Seconds{5});
  EXPECT_THAT(results_, ElementsAre("xin chào."));
  EXPECT_THAT(events,
              ElementsAre("task started for vi_VN", "task cancelled", "final “xin chào” after the cancel"));
}

TEST(SimulatedSpeechReplacement, AnotherRecognitionTakesItsPlace) {
  class NoSpeech final : public platform::Speech {
   public:
    std::shared_ptr<platform::SpeechRecognizer> makeRecognizer(const std::string&) override {
      return nullptr;
    }
    std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest()
        override {
      return std::make_shared<platform::BufferedRecognitionRequest>();
    }
    void requestAuthorization(std::function<void(platform::SpeechAuthorizationStatus)>) override {}
  };
  SimulatedDesktop desktop{{.speech = [](platform::MainQueue&) { return std::make_unique<NoSpeech>(); }}};
  EXPECT_EQ(platform::current().speech.makeRecognizer("vi_VN"), nullptr);
}

}  // namespace
}  // namespace tavelo::simulated
