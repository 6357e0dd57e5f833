#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/session/DesktopEntries.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class DesktopEntriesTest : public testing::Test {
 protected:
  void install(const std::string& file, const std::string& lines) {
    temporary_.write(file, "[Desktop Entry]\nType=Application\n" + lines);
  }

  /// "identifier=name" of the application found, or "none".
  std::string found(const std::string& windowClass, const std::string& program = {}) {
    const auto* entry = entries_.find({.instance = "-", .name = windowClass}, program);
    return entry != nullptr ? entry->identifier + "=" + entry->name : "none";
  }

  const TemporaryFolder temporary_;
  const fs::path folder_ = temporary_.path();
  DesktopEntries entries_{{folder_ / "user", folder_ / "system", "/does/not/exist"}, "vi_VN.UTF-8@x"};
};

TEST_F(DesktopEntriesTest, FindsByClassThenNameThenLastPartThenProgram) {
  install("system/a.desktop", "Name=By class\nStartupWMClass=Text\nExec=env A=b \"/usr/bin/pad\" %U\n");
  install("system/text.desktop", "Name=By file name\n");
  install("system/org.example.Writer.desktop", "Name=By last part\n");
  EXPECT_EQ(found("Text"), "a=By class");
  EXPECT_EQ(found("TEXT"), "a=By class");
  EXPECT_EQ(found("writer"), "org.example.Writer=By last part");
  EXPECT_EQ(found("Unknown", "pad"), "a=By class");
  EXPECT_EQ(found("Unknown", "env"), "none");
  EXPECT_EQ(found(""), "none");
}

TEST_F(DesktopEntriesTest, NameIsTheUsersAndOnlyOfTheMainGroup) {
  install("system/kde/pad.desktop",
          "Name[vi_VN@y]=0\nName[vi]=Bút\nName=Pen\nName[de]=Stift\n[Desktop Action new]\nName[vi_VN]=Mới\n");
  EXPECT_EQ(found("kde-pad"), "kde-pad=Bút");
}

TEST_F(DesktopEntriesTest, UsersFolderCountsFirstAndChangesAreSeen) {
  install("system/pad.desktop", "Name=System\n");
  EXPECT_EQ(found("Pad"), "pad=System");
  install("user/pad.desktop", "Name=User\n");
  EXPECT_EQ(found("Pad"), "pad=User");
}

TEST_F(DesktopEntriesTest, WhatIsNoEntryIsPassedOver) {
  install("system/pad.desktop", "Name=Pad\n");
  ASSERT_EQ(::mkfifo((folder_ / "system/pipe.desktop").c_str(), 0600), 0);
  fs::create_directories(folder_ / "system/folder.desktop");
  fs::create_symlink("loop.desktop", folder_ / "system/loop.desktop");
  temporary_.write("system/rubbish.desktop", "\0=[\nName\n[Desktop Entry]\n=\nName[=x\n"s);
  EXPECT_EQ(found("rubbish"), "none");
  EXPECT_EQ(found("pipe"), "none");
  EXPECT_EQ(found("Pad"), "pad=Pad");
}

}  // namespace
}  // namespace tavelo::linuxdesktop
