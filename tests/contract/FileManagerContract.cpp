#include "tests/contract/FileManagerContract.h"

#include <optional>
#include <string>

namespace tavelo::contract {
namespace {

TEST_P(FileManagerContract, ContentsComeBackByteForByte) {
  const auto file = folder() / "bản ghi.json";
  EXPECT_FALSE(files().fileExists(file));
  EXPECT_EQ(files().contents(file), std::nullopt);
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  for (const std::string& contents : {bytes + bytes, std::string{"shorter"}, std::string{}}) {
    EXPECT_TRUE(files().writeAtomically(file, contents));
    EXPECT_TRUE(files().fileExists(file));
    EXPECT_EQ(files().contents(file), contents);
  }
}

TEST_P(FileManagerContract, FolderIsMadeWithItsParentsAndMayExist) {
  const auto nested = folder() / "a" / "b" / "c";
  EXPECT_FALSE(files().writeAtomically(nested / "file", "x"));
  EXPECT_TRUE(files().createDirectory(nested));
  EXPECT_TRUE(files().createDirectory(nested));
  EXPECT_TRUE(files().fileExists(nested.parent_path()));
  EXPECT_TRUE(files().writeAtomically(nested / "file", "x"));
}

TEST_P(FileManagerContract, FolderCannotStandInAFilesPlace) {
  const auto file = folder() / "file";
  ASSERT_TRUE(files().writeAtomically(file, "kept"));
  EXPECT_FALSE(files().createDirectory(file));
  EXPECT_FALSE(files().createDirectory(file / "below"));
  EXPECT_FALSE(files().writeAtomically(file / "below", "x"));
  EXPECT_EQ(files().contents(file), "kept");
}

TEST_P(FileManagerContract, FolderIsNoFile) {
  const auto inner = folder() / "inner";
  ASSERT_TRUE(files().createDirectory(inner));
  EXPECT_EQ(files().contents(inner), std::nullopt);
  EXPECT_FALSE(files().writeAtomically(inner, "x"));
  EXPECT_TRUE(files().createDirectory(inner));
}

}  // namespace
}  // namespace tavelo::contract
