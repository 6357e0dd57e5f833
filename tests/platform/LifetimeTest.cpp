#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "platform/Lifetime.h"
#include "platform/Platform.h"

namespace tavelo::platform {
namespace {

TEST(Lifetime, AGuardedCallableRunsOnlyWhileItsOwnerLives) {
  int sum = 0;
  auto lifetime = std::make_unique<Lifetime>();
  const std::function<void(int)> add = lifetime->guard([&sum](int n) { sum += n; });
  add(1);
  lifetime.reset();
  add(2);
  EXPECT_EQ(sum, 1);
}

TEST(PlatformDeathTest, UsingThePlatformBeforeItIsInstalledStopsTheProgram) {
  EXPECT_DEATH(current(), "no platform is installed");
}

}  // namespace
}  // namespace tavelo::platform
