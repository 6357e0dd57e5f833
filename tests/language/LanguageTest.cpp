#include <map>
#include <string>

#include <gmock/gmock.h>

#include "language/Language.h"

namespace tavelo::language {
namespace {

struct Environment {
  std::map<std::string, std::string> variables;
  Language expected;
};

TEST(LanguageTest, FollowsTheLocaleAndTheListBeforeIt) {
  using enum Language;
  for (const auto& [variables, expected] : {
           Environment{{}, english},
           {{{"LANG", "vi_VN.UTF-8"}}, vietnamese},
           {{{"LANG", "vi"}, {"LC_CTYPE", "en_US.UTF-8"}}, vietnamese},
           {{{"LANG", "vie_VN"}}, english},
           {{{"LANG", "vi_VN"}, {"LC_MESSAGES", "en_GB.UTF-8"}}, english},
           {{{"LANG", "de_DE"}, {"LC_MESSAGES", "en_GB"}, {"LC_ALL", "vi_VN@x"}}, vietnamese},
           {{{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "fr:vi:en"}}, vietnamese},
           {{{"LANG", "vi_VN.UTF-8"}, {"LANGUAGE", "en_US:vi"}}, english},
           {{{"LANG", "vi_VN.UTF-8"}, {"LANGUAGE", "fr::de"}}, vietnamese},
           {{{"LANG", "vi_VN.UTF-8"}, {"LC_ALL", "C.UTF-8"}, {"LANGUAGE", "vi"}}, english},
       }) {
    const auto language = languageOf([&](const std::string& name) {
      const auto found = variables.find(name);
      return found == variables.end() ? std::string{} : found->second;
    });
    EXPECT_EQ(language, expected) << testing::PrintToString(variables);
  }
}

TEST(LanguageTest, ReplacesPlaceholdersOnceAndInTheOrderOfTheLanguage) {
  static constexpr Text text{"{0} of {1}: {0}", "{1}: {0}"};
  EXPECT_EQ(say(Language::english, text, {"{1}", "b"}), "{1} of b: {1}");
  EXPECT_EQ(say(Language::vietnamese, text, {"{1}", "b"}), "b: {1}");
  EXPECT_EQ(say(Language::english, text, {"a"}), "a of {1}: a");
}

}  // namespace
}  // namespace tavelo::language
