#include <utility>

#include <gtest/gtest.h>

#include "platform/UnreadPaste.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo::platform {
namespace {

TEST(UnreadPasteTest, TellsOnceOfAPasteThatNobodyFetched) {
  simulated::SimulatedDesktop desktop;
  auto& pasteboard = desktop.pasteboard();
  UnreadPaste paste{desktop.loop(), pasteboard};
  int told = 0;
  paste.onUnread = [&] { ++told; };
  const auto dictate = [&](bool isFetched, double pause) {
    pasteboard.clearContents();
    pasteboard.setString("văn bản", pasteboardTypeString);
    paste.expect();
    if (isFetched) pasteboard.fetch();
    desktop.advance(Seconds{pause});
    return std::exchange(told, 0);
  };
  EXPECT_EQ(dictate(false, 10), 0) << "this pasteboard cannot tell";
  pasteboard.setTellsFetches(true);
  EXPECT_EQ(dictate(true, 10), 0);
  EXPECT_EQ(dictate(false, 3.4), 0);
  EXPECT_EQ(dictate(false, 10), 1) << "only the newer one counts";
  EXPECT_EQ(dictate(false, 1), 0);
  paste.forget();
  desktop.advance(Seconds{10});
  EXPECT_EQ(told, 0) << "the user knows already";
}

}  // namespace
}  // namespace tavelo::platform
