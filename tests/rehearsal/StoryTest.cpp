#include <ostream>
#include <string>
#include <variant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rehearsal/Story.h"

namespace tavelo::rehearsal {
namespace {

using testing::HasSubstr;
using testing::Not;

struct BadStory {
  const char* name;
  std::string json;
  const char* complaint;
};

void PrintTo(const BadStory& tested, std::ostream* out) { *out << tested.name; }

class BadStoryTest : public testing::TestWithParam<BadStory> {};

std::string withSteps(const std::string& steps) {
  return R"({"title": "t", "desktop": {"applications": [{"name": "A", "fields": [{"name": "f"}]}]}, "steps": )" +
         steps + R"(, "expect": {}})";
}

INSTANTIATE_TEST_SUITE_P(
    Stories, BadStoryTest,
    testing::Values(
        BadStory{"empty", "", "not JSON"},                                                          //
        BadStory{"wav", std::string("RIFF\0\0WAVE", 10), "not JSON"},                               //
        BadStory{"badUtf8", "{\"title\": \"\xFF\"}", "not JSON"},                                   //
        BadStory{"deep", std::string(100000, '['), "not JSON"},                                     //
        BadStory{"list", "[]", "an object is wanted"},                                              //
        BadStory{"noDesktop", R"({"title": "t"})", "“desktop” is missing"},                         //
        BadStory{"noSteps", withSteps("[]"), "nothing happens"},                                    //
        BadStory{"stepsNoList", withSteps("{}"), "steps: a list is wanted"},                        //
        BadStory{"misspelt", withSteps(R"([{"at": 1, "presss": "fn"}])"), "steps[0]"},              //
        BadStory{"twoActions", withSteps(R"([{"at": 1, "press": "fn", "quit": "A"}])"), "“quit”"},  //
        BadStory{"zeroByte", withSteps(R"([{"at": 1, "focus": "\u0000x"}])"), "x”"},                //
        BadStory{"noTime", withSteps(R"([{"press": "fn"}])"), "“at” is missing"},                   //
        BadStory{"endless", withSteps(R"([{"at": 1e300, "press": "fn"}])"), "3600"},                //
        BadStory{"backwards", withSteps(R"([{"at": 2, "press": "fn"}, {"at": 1, "release": "fn"}])"),
                 "order of time"},
        BadStory{"badWord", withSteps(R"([{"at": 1, "command": "dance"}])"), "“dance” is not known"},
        BadStory{"badExpectation", withSteps(R"([{"at": 1, "expect": {"overlays": "hidden"}}])"),
                 "“overlays”"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(BadStoryTest, IsRefusedInOneLineThatSaysWhere) {
  const auto parsed = parseStory(GetParam().json);
  ASSERT_TRUE(std::holds_alternative<std::string>(parsed));
  EXPECT_THAT(std::get<std::string>(parsed), HasSubstr(GetParam().complaint));
  EXPECT_THAT(std::get<std::string>(parsed), Not(HasSubstr("\n")));
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
