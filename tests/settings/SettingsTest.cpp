#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "settings/Names.h"
#include "settings/Settings.h"

namespace tavelo::settings {
namespace {

namespace fs = std::filesystem;

TEST(SettingsLines, ReadWhatPeopleWrite) {
  using enum Line::Kind;
  const struct {
    const char* text;
    Line::Kind kind;
    const char* value = "";
  } cases[] = {
      {"", empty},
      {" \t\r", empty},
      {"# X=1", empty},
      {"  ; X=1", empty},
      {"X=Pause", setting, "Pause"},
      {"\xEF\xBB\xBFX = Pause\t\r", setting, "Pause"},
      {"X=", setting},
      {"X= # nothing yet", setting},
      {"X=ws://host:2700/a#b;c # office", setting, "ws://host:2700/a#b;c"},
      {"X=/home/me/Models, my  own ; new", setting, "/home/me/Models, my  own"},
      {"X=\"/a # b, 'c'\"   # comment", setting, "/a # b, 'c'"},
      {"X='C:\\models \"one\"'", setting, "C:\\models \"one\""},
      {"X=[a, b", setting, "[a, b"},
      {"X='Hà Nội'", setting, "Hà Nội"},
      {"X=\"not ended", damaged},
      {"X='a' b", damaged},
      {"X", damaged},
      {"=Pause", damaged},
      {"[general]", damaged},
      {"some words = value", damaged},
      {"X=a\x01z", damaged},
  };
  for (const auto& each : cases) {
    const auto line = Line::read(each.text);
    EXPECT_EQ(line.kind, each.kind) << each.text;
    EXPECT_EQ(line.value, each.value) << each.text;
  }
  EXPECT_EQ(Line::read(std::string_view("X=a\0b", 5)).kind, damaged);
}

TEST(SettingsLines, ChangeOnlyWhatIsAsked) {
  const struct {
    const char* before;
    Values changes;
    const char* after;
  } cases[] = {
      {"", {{"A", "1"}, {"B", ""}}, "A=1\n"},
      {"# mine\nOTHER=x\nA = 'old' # why\n[odd\n", {{"A", "new"}}, "# mine\nOTHER=x\nA = new # why\n[odd\n"},
      {"A=1\r\nB=2", {{"C", "3"}}, "A=1\r\nB=2\r\nC=3\r\n"},
      {"A=1\nB=2\nA=3\n", {{"A", "4"}}, "A=4\nB=2\n"},
      {"A=1\nB=2\nA=3\n", {{"A", ""}}, "B=2\n"},
      {"", {{"A", "a # b"}}, "A=\"a # b\"\n"},
      {"", {{"A", "\"a\" ; b"}}, "A='\"a\" ; b'\n"},
      {"A=", {{"A", " b "}}, "A=\" b \""},
  };
  for (const auto& each : cases) EXPECT_EQ(withChanges(each.before, each.changes), each.after) << each.before;
  for (const char* value : {"a\nB=2", "'\" # ", "\x7F"})
    EXPECT_FALSE(withChanges("", {{"A", value}})) << value;
  EXPECT_FALSE(withChanges("", {{"A=1\nB", "2"}}));
}

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    std::string name = (fs::temp_directory_path() / "tavelo-settings-XXXXXX").string();
    home_ = mkdtemp(name.data());
    file_ = home_ / "Tavelo" / "tavelo.conf";
  }
  ~SettingsTest() override { fs::remove_all(home_); }

  void put(std::string_view text) {
    fs::create_directories(file_.parent_path());
    std::ofstream(file_, std::ios::binary) << text;
  }
  std::string text() const {
    std::ostringstream content;
    content << std::ifstream(file_, std::ios::binary).rdbuf();
    return content.str();
  }
  Settings settings() {
    return Settings(home_, [this](const char* name) { return environment_[name]; });
  }

  fs::path home_;
  fs::path file_;
  std::map<std::string, std::string> environment_;
};

TEST_F(SettingsTest, EnvironmentWinsAndChangesOfTheFileAreSeenByReload) {
  put("TAVELO_FN_KEY=Pause\nTAVELO_MODEL=/a\nhalf a line\nTAVELO_MODEL=/b\n");
  environment_["TAVELO_FN_KEY"] = "F8";
  auto tested = settings();
  EXPECT_EQ(tested.get(names::holdKey).origin, Origin::environment);
  EXPECT_EQ(tested.value(names::holdKey), "F8");
  EXPECT_EQ(tested.get(names::model).origin, Origin::file);
  EXPECT_EQ(tested.value(names::model), "/b");
  EXPECT_EQ(tested.get(names::recognizer).origin, Origin::unset);
  EXPECT_EQ(tested.error(), "line 3 is not NAME=value, and is skipped");
  EXPECT_FALSE(tested.reload());
  put("TAVELO_MODEL=/c\n");
  EXPECT_EQ(tested.value(names::model), "/b");
  EXPECT_TRUE(tested.reload());
  EXPECT_EQ(tested.value(names::model), "/c");
  EXPECT_EQ(tested.error(), "");
  fs::remove_all(file_.parent_path());
  EXPECT_TRUE(tested.reload());
  EXPECT_EQ(tested.get(names::model).origin, Origin::unset);
  EXPECT_EQ(tested.error(), "");
}

TEST_F(SettingsTest, WritesForTheUserAloneAndThroughALink) {
  auto tested = settings();
  EXPECT_EQ(tested.write({{names::holdKey, "Pause"}}), "");
  EXPECT_EQ(text(), "TAVELO_FN_KEY=Pause\n");
  struct stat status {};
  ASSERT_EQ(stat(file_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  EXPECT_EQ(tested.value(names::holdKey), "");
  EXPECT_TRUE(tested.reload());
  const auto kept = home_ / "dotfile";
  fs::rename(file_, kept);
  fs::create_symlink("../dotfile", file_);
  EXPECT_EQ(tested.write({{names::holdKey, "F8"}, {names::microphone, "usb"}}), "");
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_EQ(text(), "TAVELO_FN_KEY=F8\nTAVELO_MICROPHONE=usb\n");
}

TEST_F(SettingsTest, UnusableFileIsNamedAndLeftAlone) {
  const Values change{{names::holdKey, "F8"}};
  const auto expectRefused = [&](const std::string& why) {
    auto tested = settings();
    EXPECT_EQ(tested.error(), why);
    EXPECT_EQ(tested.write(change), file_.string() + ": " + why);
    EXPECT_EQ(tested.value(names::holdKey), "");
  };
  put("");
  fs::resize_file(file_, 100'000'000);
  expectRefused("is larger than a megabyte");
  fs::remove(file_);
  fs::create_directory(file_);
  expectRefused("is a folder");
  fs::remove(file_);
  ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
  expectRefused("cannot be read");
  fs::remove(file_);
  fs::create_symlink(file_.filename(), file_);
  expectRefused("Too many levels of symbolic links");
  fs::remove_all(file_.parent_path());
  std::ofstream(file_.parent_path()) << "a file in place of the folder";
  auto blocked = settings();
  EXPECT_EQ(blocked.error(), "");
  EXPECT_NE(blocked.write(change), "");
  Settings homeless(std::nullopt, [](const char*) { return ""; });
  EXPECT_EQ(homeless.error(), "");
  EXPECT_NE(homeless.write(change), "");
}

}  // namespace
}  // namespace tavelo::settings
