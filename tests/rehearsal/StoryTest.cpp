#include <string>
#include <utility>
#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rehearsal/Story.h"

namespace tavelo::rehearsal {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string withSteps(const std::string& steps) {
  return R"({"title": "t", "desktop": {"applications": [{"name": "A", "fields": [{"name": "f"}]}]}, "steps": )" +
         steps + R"(, "expect": {}})";
}

TEST(StoryTest, ABadOneIsRefusedInOneLineThatSaysWhere) {
  const std::pair<std::string, const char*> stories[] = {
      {"", "not JSON"},
      {std::string("RIFF\0\0WAVE", 10), "not JSON"},
      {"{\"title\": \"\xFF\"}", "not JSON"},
      {std::string(100000, '['), "not JSON"},
      {"[]", "an object is wanted"},
      {R"({"title": "t"})", "“desktop” is missing"},
      {withSteps("[]"), "nothing happens"},
      {withSteps("{}"), "steps: a list is wanted"},
      {withSteps(R"([{"at": 1, "presss": "fn"}])"), "steps[0]"},
      {withSteps(R"([{"at": 1, "press": "fn", "quit": "A"}])"), "“quit”"},
      {withSteps(R"([{"at": 1, "focus": "\u0000x"}])"), "x”"},
      {withSteps(R"([{"press": "fn"}])"), "“at” is missing"},
      {withSteps(R"([{"at": 1e300, "press": "fn"}])"), "3600"},
      {withSteps(R"([{"at": 2, "press": "fn"}, {"at": 1, "release": "fn"}])"), "order of time"},
      {withSteps(R"([{"at": 1, "command": "dance"}])"), "“dance” is not known"},
      {withSteps(R"([{"at": 1, "expect": {"overlays": "hidden"}}])"), "“overlays”"},
  };
  for (const auto& [json, complaint] : stories) {
    SCOPED_TRACE(json.substr(0, 100));
    const auto parsed = parseStory(json);
    ASSERT_TRUE(std::holds_alternative<std::string>(parsed));
    EXPECT_THAT(std::get<std::string>(parsed), HasSubstr(complaint));
    EXPECT_THAT(std::get<std::string>(parsed), Not(HasSubstr("\n")));
  }
}

TEST(StoryTest, OnlyIntroducedNamesAndKnownKeysMayBeUsed) {
  for (const std::string step : {R"("press": "hyper")", R"("tap": "control-")", R"("focus": "A/g")",
                                 R"("quit": "B")", R"("expect": {"fields": {"A": ""}})"}) {
    const auto parsed = parseStory(withSteps(R"([{"at": 1, )" + step + "}]"));
    ASSERT_TRUE(std::holds_alternative<std::string>(parsed)) << step;
    EXPECT_THAT(std::get<std::string>(parsed), HasSubstr("there is no "));
  }
  EXPECT_TRUE(std::holds_alternative<Story>(
      parseStory(withSteps(R"([{"at": 1, "focus": "A/f"}, {"at": 1, "tap": "control-option-v"}])"))));
}

}  // namespace
}  // namespace tavelo::rehearsal
