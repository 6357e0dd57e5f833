#include <gtest/gtest.h>

#include "platform/qt/QtResources.h"

namespace tavelo::qt {
namespace {

TEST(QtResources, PicturesComeWithTheProgramAndUnknownNamesAreAbsent) {
  const QtResources resources;
  EXPECT_EQ(resources.data("AppIcon", "icns").value_or("").substr(0, 4), "icns");
  EXPECT_EQ(resources.data("Founder", "png").value_or("").substr(1, 3), "PNG");
  EXPECT_EQ(resources.data("Founder", "icns"), std::nullopt);
  EXPECT_EQ(resources.data("", ""), std::nullopt);
}

}  // namespace
}  // namespace tavelo::qt
