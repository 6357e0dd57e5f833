#include <map>

#include <gtest/gtest.h>

#include "platform/recognizer/VoskConfiguration.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::recognizer {
namespace {

VoskConfiguration::Environment environment(const std::map<std::string, std::string>& variables) {
  return [variables](const char* name) {
    const auto found = variables.find(name);
    return found != variables.end() ? found->second : std::string{};
  };
}

TEST(VoskConfiguration, TheEnvironmentWinsOverTheDataHomeAndThatOverTheLoader) {
  const TemporaryFolder home;
  const auto unset = environment({{"TAVELO_VOSK_LIBRARY", ""}});
  EXPECT_EQ(VoskConfiguration(std::nullopt, unset).library(), "libvosk.so");
  EXPECT_EQ(VoskConfiguration(home.path(), unset).library(), "libvosk.so");
  home.write("Tavelo/lib/libvosk.so", "");
  EXPECT_EQ(VoskConfiguration(home.path(), unset).library(), home.path() / "Tavelo/lib/libvosk.so");
  EXPECT_EQ(VoskConfiguration(home.path(), environment({{"TAVELO_VOSK_LIBRARY", "/other.so"}})).library(),
            "/other.so");
}

TEST(VoskConfiguration, TheModelIsInTheFolderOfTheLocale) {
  const TemporaryFolder home;
  const VoskConfiguration configuration{home.path(), environment({})};
  EXPECT_FALSE(configuration.modelFolder("vi_VN"));
  home.write("Tavelo/models/vi_VN/am", "");
  home.write("Tavelo/models/en_US", "a file, no folder");
  EXPECT_EQ(configuration.modelFolder("vi_VN"), home.path() / "Tavelo/models/vi_VN");
  EXPECT_FALSE(configuration.modelFolder("en_US"));
  EXPECT_FALSE(VoskConfiguration(std::nullopt, environment({})).modelFolder("vi_VN"));
}

TEST(VoskConfiguration, ALocaleCannotNameAnotherFolder) {
  const TemporaryFolder home;
  home.write("Tavelo/lib/libvosk.so", "");
  home.write("Tavelo/models/vi_VN/am", "");
  const VoskConfiguration configuration{home.path(), environment({})};
  for (const std::string locale :
       {"", ".", "..", "../lib", "../models/vi_VN", "vi_VN/", "/tmp", "vi_VN/../vi_VN"})
    EXPECT_FALSE(configuration.modelFolder(locale)) << locale;
  EXPECT_FALSE(configuration.modelFolder(std::string{"vi_VN\0/..", 9}));
}

TEST(VoskConfiguration, AModelNamedByTheEnvironmentIsForVietnameseOnly) {
  const TemporaryFolder home;
  home.write("Tavelo/models/en_US/am", "");
  home.write("mine/am", "");
  const VoskConfiguration named{home.path(), environment({{"TAVELO_VOSK_MODEL", home.path() / "mine"}})};
  EXPECT_EQ(named.modelFolder("vi_VN"), home.path() / "mine");
  EXPECT_FALSE(named.modelFolder("en_US"));
  const VoskConfiguration gone{home.path(), environment({{"TAVELO_VOSK_MODEL", home.path() / "gone"}})};
  EXPECT_FALSE(gone.modelFolder("vi_VN"));
}

}  // namespace
}  // namespace tavelo::recognizer
