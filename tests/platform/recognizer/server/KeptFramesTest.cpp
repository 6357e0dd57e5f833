#include <QByteArray>

#include <gtest/gtest.h>

#include "platform/recognizer/server/KeptFrames.h"

namespace tavelo::recognizer {
namespace {

TEST(KeptFrames, HoldWhatNoFinishedUtteranceHas) {
  KeptFrames frames;
  const auto exchange = [&](int first, int last, int answers) {
    for (int i = first; i <= last; ++i) frames.sent(QByteArray(1, static_cast<char>(i)));
    for (int i = 0; i < answers; ++i) frames.answered();
  };
  exchange(1, 5, 4);
  frames.utteranceEnded();
  EXPECT_EQ(frames.take(), QByteArray("\4\5")) << "the frame of the pause, and what is not answered";
  exchange(1, 40, 38);
  frames.isSilent();
  const auto sound = frames.take();
  EXPECT_EQ(sound.size(), 32) << "three seconds, and what is not answered";
  EXPECT_EQ(sound.back(), 40);
  EXPECT_TRUE(frames.take().isEmpty());
}

}  // namespace
}  // namespace tavelo::recognizer
