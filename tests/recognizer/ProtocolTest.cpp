#include <array>
#include <cstring>
#include <deque>
#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include "recognizer/FrameParser.h"
#include "recognizer/Inbox.h"
#include "recognizer/Outbox.h"
#include "recognizer/Session.h"

namespace tavelo::recognition {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string number(std::uint32_t value) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
  return bytes;
}

std::string frame(char kind, const std::string& payload = {}) {
  return kind + number(static_cast<std::uint32_t>(payload.size())) + payload;
}

std::string begin(std::uint32_t dictation, std::uint32_t rate = 16000) {
  return frame('B', number(dictation) + number(rate));
}

struct RecordedFrames final : FrameHandler {
  void begin(std::uint32_t dictation, std::uint32_t rate) override {
    all.push_back("B " + std::to_string(dictation) + " " + std::to_string(rate));
  }
  void sound(std::vector<std::int16_t> samples) override {
    all.push_back("S");
    for (const int sample : samples) all.back() += " " + std::to_string(sample);
  }
  void end() override { all.push_back("E"); }
  void cancel() override { all.push_back("C"); }

  std::vector<std::string> all;
};

/// Feeds in pieces of `size` bytes.
bool feed(FrameHandler& handler, std::string_view bytes, std::size_t size) {
  FrameParser parser{handler};
  for (; !bytes.empty(); bytes.remove_prefix(std::min(size, bytes.size()))) {
    const auto piece = bytes.substr(0, size);
    if (!parser.feed({reinterpret_cast<const std::uint8_t*>(piece.data()), piece.size()})) return false;
  }
  return true;
}

TEST(FrameParser, ReadsFramesHoweverTheyArriveAndRefusesBadOnes) {
  const std::string good =
      begin(7, 44100) + frame('S', {"\x01\x00\xFF\xFF\x00\x80", 6}) + frame('S') + frame('E') + frame('C');
  for (const std::size_t size : {1U, 2U, 7U, 1000U}) {
    RecordedFrames frames;
    EXPECT_TRUE(feed(frames, good, size));
    EXPECT_THAT(frames.all, ElementsAre("B 7 44100", "S 1 -1 -32768", "S", "E", "C"));
  }
  for (const auto& bad :
       {frame('X'), frame('B', "1234567"), frame('S', "123"), frame('E', "1"), frame('C', "12"),
        'S' + number(0xFFFFFFFF), 'X' + number(1000), frame('S', std::string(1024 * 1024 + 2, 'x'))}) {
    RecordedFrames frames;
    EXPECT_FALSE(feed(frames, frame('E') + bad, 1000));
    EXPECT_THAT(frames.all, ElementsAre("E"));
  }
}

/// An engine that hears what a test says, or nothing.
class ScriptedEngine final : public Engine {
 public:
  struct Step {
    std::string heard;
    std::string closed;
    std::string failure;
  };
  std::deque<Step> script;
  std::vector<std::size_t> pieces;
  bool canBegin = true;
  /// Happens while a piece is decoded.
  std::function<void()> meanwhile;

  std::string_view name() const override { return "scripted"; }
  std::string version() const override { return "1"; }
  std::unique_ptr<Dictation> begin(std::uint32_t /*rate*/, Listener& listener) override {
    return canBegin ? std::make_unique<Scripted>(*this, listener) : nullptr;
  }

 private:
  class Scripted final : public Dictation {
   public:
    Scripted(ScriptedEngine& engine, Listener& listener) : engine_(engine), listener_(listener) {}
    std::string accept(std::span<const std::int16_t> samples, bool /*moreWaits*/) override {
      engine_.pieces.push_back(samples.size());
      until_ += samples.size();
      if (engine_.meanwhile) engine_.meanwhile();
      if (engine_.script.empty()) return {};
      const auto step = engine_.script.front();
      engine_.script.pop_front();
      if (!step.closed.empty()) listener_.closed(step.closed, until_);
      if (!step.heard.empty()) listener_.heard(step.heard);
      return step.failure;
    }
    std::string finish() override {
      listener_.closed("rest", until_);
      return {};
    }

   private:
    ScriptedEngine& engine_;
    Listener& listener_;
    std::uint64_t until_ = 0;
  };
};

/// A session without threads.
struct SessionTest : testing::Test {
  ScriptedEngine engine;
  Outbox outbox;
  Inbox inbox{outbox};
  Session session{engine, inbox, outbox};

  void input(const std::string& bytes, int steps) {
    EXPECT_TRUE(feed(inbox, bytes, bytes.size()));
    for (int i = 0; i < steps; ++i) session.step();
  }
  std::vector<std::string> output() {
    std::vector<std::string> lines;
    outbox.close();
    outbox.writeAll([&](std::string_view line) {
      lines.emplace_back(line.substr(0, line.size() - 1));
      return true;
    });
    return lines;
  }
  static std::string sound(std::size_t samples) { return frame('S', std::string(2 * samples, '\0')); }
};

TEST_F(SessionTest, TellsOneDictationInTheProtocolsWords) {
  engine.script = {
      {"Mo\xCC\xA3t\x1B hai\n", "", ""}, {"Mọt\n hai", "", ""}, {"", "một", ""}, {"ba \"b\xFF", "", ""}};
  input(begin(7) + sound(100), 1);
  EXPECT_THAT(output(), ElementsAre(R"({"dictation":7,"text":"Mọt  hai"})"));
  input(sound(10), 1);
  EXPECT_THAT(output(), IsEmpty()) << "the text has not changed";
  input(sound(40), 1);
  input(sound(1), 1);
  input(frame('E'), 1);
  EXPECT_THAT(output(), ElementsAre(R"({"dictation":7,"closed":"một","until":150})",
                                    R"({"dictation":7,"closed":"rest","until":151})",
                                    R"({"dictation":7,"final":true})"));
}

TEST_F(SessionTest, ReplacesUnreadTextsButNotClosedOnes) {
  engine.script = {{"a", "", ""}, {"b", "", ""}, {"c", "x", ""}, {"d", "", ""}, {"d", "", ""}};
  for (int i = 0; i < 5; ++i) input((i == 0 ? begin(1) : "") + sound(1), 1);
  EXPECT_THAT(output(),
              ElementsAre(R"({"dictation":1,"closed":"x","until":3})", R"({"dictation":1,"text":"d"})"));
}

TEST_F(SessionTest, ForgetsADictationThatIsGivenUp) {
  engine.script = {{"a", "b", ""}};
  input(begin(1) + sound(10), 1);
  input(frame('C') + sound(5) + frame('E'), 1);
  EXPECT_THAT(output(), IsEmpty());
  engine.script = {{"a", "b", ""}};
  engine.meanwhile = [this] { inbox.cancel(); };
  input(begin(1) + sound(10), 2);
  EXPECT_THAT(output(), IsEmpty());
  engine.meanwhile = nullptr;
  engine.pieces.clear();
  engine.script = {{"c", "", ""}};
  input(begin(2) + sound(10) + begin(3) + sound(20) + frame('E') + sound(5), 1);
  EXPECT_THAT(engine.pieces, ElementsAre(20));
  EXPECT_THAT(output(), ElementsAre(R"({"dictation":3,"closed":"rest","until":20})",
                                    R"({"dictation":3,"final":true})"));
}

TEST_F(SessionTest, TakesASecondOfSoundAtATimeAndStopsReadingAtFourMegabytes) {
  input(begin(1) + sound(40000) + frame('E'), 3);
  EXPECT_THAT(engine.pieces, ElementsAre(16000, 16000, 8000));
  EXPECT_FALSE(inbox.isFull());
  input(begin(2), 0);
  for (int i = 0; i < 5; ++i) input(sound(500'000), 0);
  EXPECT_TRUE(inbox.isFull());
  input(frame('C'), 0);
  EXPECT_FALSE(inbox.isFull());
}

TEST_F(SessionTest, FailsOneDictationAndGoesOnWithTheNext) {
  engine.script = {{"", "", "broke"}};
  input(begin(1) + sound(10), 1);
  input(sound(10), 1);
  input(frame('E'), 1);
  EXPECT_THAT(output(), ElementsAre(R"({"dictation":1,"failed":"broke"})"));
  for (const auto* rate : {"0", "1", "999999999"}) {
    input(begin(2, static_cast<std::uint32_t>(std::stoul(rate))), 1);
    EXPECT_THAT(output(), ElementsAre(std::string{R"({"dictation":2,"failed":"sound at )"} + rate +
                                      R"( Hz cannot be recognised"})"));
  }
  engine.canBegin = false;
  input(begin(3), 1);
  EXPECT_THAT(output(), ElementsAre(R"({"dictation":3,"failed":"the library cannot begin a recognition"})"));
  engine.canBegin = true;
  input(begin(4) + frame('E'), 1);
  EXPECT_EQ(output().back(), R"({"dictation":4,"final":true})");
}

}  // namespace
}  // namespace tavelo::recognition
