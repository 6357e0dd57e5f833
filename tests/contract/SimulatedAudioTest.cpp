#include <chrono>
#include <cstdint>
#include <numeric>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::simulated {
namespace {

using platform::AudioBuffer;
using platform::Seconds;
using testing::ElementsAre;
using namespace std::chrono_literals;

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

}  // namespace
}  // namespace tavelo::simulated
