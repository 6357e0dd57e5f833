#include <gtest/gtest.h>

#include "platform/linux/x11/keyboard/HeldKeys.h"

namespace tavelo::linuxdesktop {
namespace {

constexpr KeyNumber hold = 105;
constexpr KeyNumber secondHold = 106;
constexpr KeyNumber shift = 50;
constexpr KeyNumber letter = 38;

class HeldKeysTest : public testing::Test {
 protected:
  HeldKeysTest() {
    KeyRoles roles{};
    roles[hold] = roles[secondHold] = {.flag = platform::keyflags::secondaryFn, .isModifier = true};
    roles[shift] = {.flag = platform::keyflags::shift, .isModifier = true, .altersOthers = true};
    held_.setRoles(roles, {});
  }

  HeldKeys held_;
};

TEST_F(HeldKeysTest, OnlyAnotherKeyThatGoesDownDuringTheHoldInterruptsIt) {
  EXPECT_FALSE(held_.wouldInterruptHold(letter)) << "nothing is held";
  held_.move(hold, true, {});
  EXPECT_FALSE(held_.wouldInterruptHold(hold));
  EXPECT_FALSE(held_.wouldInterruptHold(secondHold));
  EXPECT_FALSE(held_.wouldInterruptHold(shift));
  EXPECT_TRUE(held_.wouldInterruptHold(letter));
  held_.move(letter, true, {});
  EXPECT_FALSE(held_.wouldInterruptHold(letter)) << "a repeat";
  held_.move(letter, false, {});
  held_.move(hold, false, {});
  EXPECT_FALSE(held_.wouldInterruptHold(letter));
}

}  // namespace
}  // namespace tavelo::linuxdesktop
