#include <string_view>

#include <gtest/gtest.h>

#include "platform/Uuid.h"

namespace tavelo::platform {
namespace {

TEST(Uuid, ReadsEitherCaseAndWritesUpperCase) {
  constexpr std::string_view upper = "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0";
  const auto uuid = Uuid::parse(upper);
  ASSERT_TRUE(uuid);
  EXPECT_EQ(uuid->string(), upper);
  EXPECT_EQ(Uuid::parse("0f1e2D3c-4b5a-6978-8796-a5b4c3d2e1f0"), uuid);
}

TEST(Uuid, RefusesEveryOtherForm) {
  for (const std::string_view bad :
       {"", "0F1E2D3C4B5A69788796A5B4C3D2E1F0", "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}",
        "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1G0",
        "0F1E2D3C-4B5A-6978-8796A-5B4C3D2E1F0", "0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0 "}) {
    EXPECT_FALSE(Uuid::parse(bad)) << bad;
  }
}

TEST(Uuid, RandomOnesAreOfVersion4AndDiffer) {
  const Uuid uuid = Uuid::random();
  EXPECT_EQ(uuid.string()[14], '4');
  EXPECT_NE(std::string_view("89AB").find(uuid.string()[19]), std::string_view::npos);
  EXPECT_NE(uuid, Uuid::random());
  EXPECT_EQ(Uuid::parse(uuid.string()), uuid);
}

}  // namespace
}  // namespace tavelo::platform
