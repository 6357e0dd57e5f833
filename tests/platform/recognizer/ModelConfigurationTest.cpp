#include <map>

#include <gtest/gtest.h>

#include "platform/recognizer/ModelConfiguration.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::recognizer {
namespace {

ModelConfiguration::Environment environment(const std::map<std::string, std::string>& variables) {
  return [variables](const char* name) {
    const auto found = variables.find(name);
    return found != variables.end() ? found->second : std::string{};
  };
}

TEST(ModelConfiguration, TheEnvironmentWinsOverTheDataHomeAndThatOverTheLoader) {
  const TemporaryFolder home;
  const auto unset = environment({{"TAVELO_VOSK_LIBRARY", ""}});
  const auto set =
      environment({{"TAVELO_VOSK_LIBRARY", "/vosk.so"}, {"TAVELO_SHERPA_LIBRARY", "/sherpa.so"}});
  home.write("vosk/am", "");
  home.write("sherpa/encoder.onnx", "");
  const auto library = [&](const auto& variables, const char* model) {
    return ModelConfiguration(home.path(), variables).libraryFor(home.path() / model);
  };
  EXPECT_EQ(library(unset, "vosk"), "");
  home.write("Tavelo/lib/libvosk.so", "");
  EXPECT_EQ(library(unset, "vosk"), home.path() / "Tavelo/lib/libvosk.so");
  EXPECT_EQ(library(unset, "sherpa"), "");
  EXPECT_EQ(library(set, "vosk"), "/vosk.so");
  EXPECT_EQ(library(set, "sherpa"), "/sherpa.so");
  EXPECT_EQ(ModelConfiguration(std::nullopt, unset).libraryFor("/none"), "");
}

TEST(ModelConfiguration, TheModelIsInTheFolderOfTheLocale) {
  const TemporaryFolder home;
  const ModelConfiguration configuration{home.path(), environment({})};
  EXPECT_FALSE(configuration.modelFolder("vi_VN"));
  home.write("Tavelo/models/vi_VN/am", "");
  home.write("Tavelo/models/en_US", "a file, no folder");
  EXPECT_EQ(configuration.modelFolder("vi_VN"), home.path() / "Tavelo/models/vi_VN");
  EXPECT_FALSE(configuration.modelFolder("en_US"));
  EXPECT_FALSE(ModelConfiguration(std::nullopt, environment({})).modelFolder("vi_VN"));
}

TEST(ModelConfiguration, ALocaleCannotNameAnotherFolder) {
  const TemporaryFolder home;
  home.write("Tavelo/lib/libvosk.so", "");
  home.write("Tavelo/models/vi_VN/am", "");
  const ModelConfiguration configuration{home.path(), environment({})};
  for (const std::string locale :
       {"", ".", "..", "../lib", "../models/vi_VN", "vi_VN/", "/tmp", "vi_VN/../vi_VN"})
    EXPECT_FALSE(configuration.modelFolder(locale)) << locale;
  EXPECT_FALSE(configuration.modelFolder(std::string{"vi_VN\0/..", 9}));
}

TEST(ModelConfiguration, AModelNamedByTheEnvironmentIsForVietnameseOnly) {
  const TemporaryFolder home;
  home.write("Tavelo/models/en_US/am", "");
  home.write("mine/am", "");
  const ModelConfiguration named{home.path(), environment({{"TAVELO_VOSK_MODEL", home.path() / "mine"}})};
  EXPECT_EQ(named.modelFolder("vi_VN"), home.path() / "mine");
  EXPECT_FALSE(named.modelFolder("en_US"));
  const ModelConfiguration newer{home.path(), environment({{"TAVELO_MODEL", home.path() / "Tavelo"},
                                                           {"TAVELO_VOSK_MODEL", home.path() / "mine"}})};
  EXPECT_EQ(newer.modelFolder("vi_VN"), home.path() / "Tavelo");
  const ModelConfiguration gone{home.path(), environment({{"TAVELO_VOSK_MODEL", home.path() / "gone"}})};
  EXPECT_FALSE(gone.modelFolder("vi_VN"));
  EXPECT_EQ(gone.modelPlace("vi_VN"), "TAVELO_VOSK_MODEL=" + (home.path() / "gone").string());
}

}  // namespace
}  // namespace tavelo::recognizer
