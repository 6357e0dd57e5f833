#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileManager.h"
#include "tests/platform/recognizer/TemporaryFolder.h"

namespace tavelo::posix {
namespace {

namespace fs = std::filesystem;

class PosixFileManagerTest : public testing::Test {
 protected:
  PosixFileManagerTest() {
    setenv("HOME", folder_.c_str(), 1);
    unsetenv("XDG_DATA_HOME");
  }
  ~PosixFileManagerTest() override { unsetenv("TMPDIR"); }

  std::ptrdiff_t filesInFolder() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
  }

  const TemporaryFolder temporary_;
  const fs::path folder_ = temporary_.path();
  const fs::path file_ = folder_ / "transcript-cache.json";
  const fs::path replacement_ = folder_ / ".transcript-cache.json.new";
  PosixFileManager files_;
};

/// Returns what `action` returns in a child process.
bool inChild(const std::function<bool()>& action) {
  const pid_t child = fork();
  if (child == 0) _exit(action() ? 0 : 1);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(PosixFileManagerTest, ALargeFileIsReadBackAndIsTheUsersAlone) {
  const std::string contents(300000, 'x');
  EXPECT_TRUE(files_.writeAtomically(file_, contents));
  EXPECT_EQ(files_.contents(file_), contents);
  EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(PosixFileManagerTest, DirectoriesFollowTheEnvironment) {
  setenv("XDG_DATA_HOME", "/data", 1);
  setenv("HOME", "/home/a", 1);
  EXPECT_EQ(files_.applicationSupportDirectory(), "/data");
  for (const char* unusable : {"", "relative/data"}) {
    setenv("XDG_DATA_HOME", unusable, 1);
    EXPECT_EQ(files_.applicationSupportDirectory(), "/home/a/.local/share");
  }
  unsetenv("XDG_DATA_HOME");
  setenv("HOME", "", 1);
  EXPECT_EQ(files_.applicationSupportDirectory(), std::nullopt);
  unsetenv("HOME");
  EXPECT_EQ(files_.applicationSupportDirectory(), std::nullopt);
  setenv("TMPDIR", "/var/tmp", 1);
  EXPECT_EQ(files_.temporaryDirectory(), "/var/tmp");
  unsetenv("TMPDIR");
  EXPECT_EQ(files_.temporaryDirectory(), "/tmp");
}

TEST_F(PosixFileManagerTest, NewFoldersAreTheUsersAloneWhateverTheUmask) {
  for (const mode_t mask : {0000U, 0022U, 0777U}) {
    const fs::path outer = folder_ / std::to_string(mask);
    const mode_t before = umask(mask);
    EXPECT_TRUE(files_.createDirectory(outer / "inner" / ""));
    umask(before);
    EXPECT_EQ(fs::status(outer).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(outer / "inner").permissions(), fs::perms::owner_all);
  }
  fs::permissions(folder_, fs::perms{0755});
  EXPECT_TRUE(files_.createDirectory(folder_));
  EXPECT_EQ(fs::status(folder_).permissions(), fs::perms{0755}) << "a folder that exists stays as it is";
}

TEST_F(PosixFileManagerTest, WithoutAHomeOnlyARealFolderOfTheUsersAloneServes) {
  unsetenv("HOME");
  setenv("TMPDIR", folder_.c_str(), 1);
  const fs::path victims = folder_ / "victims";
  ASSERT_TRUE(files_.createDirectory(victims / "inner"));
  for (const auto& each : {victims / "kept", victims / "inner" / "kept"}) std::ofstream(each) << "precious";
  const auto refuses = [&](const fs::path& folder) {
    SCOPED_TRACE(folder);
    EXPECT_FALSE(files_.createDirectory(folder));
    EXPECT_FALSE(files_.writeAtomically(folder / "kept", "new"));
    EXPECT_FALSE(files_.contents(folder / "kept"));
  };
  fs::create_directory_symlink(victims, folder_ / "link");
  refuses(folder_ / "link");
  refuses(folder_ / "link" / "inner");
  for (const fs::perms open : {fs::perms{0755}, fs::perms{0770}, fs::perms{0701}}) {
    fs::permissions(victims, open);
    refuses(victims);
    refuses(victims / "inner");
  }
  fs::permissions(victims, fs::perms::owner_all);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(victims.c_str(), 65534, 65534), 0);
    refuses(victims);
    ASSERT_EQ(chown(victims.c_str(), 0, 0), 0);
  }
  EXPECT_EQ(files_.contents(victims / "kept"), "precious");

  // In a folder that passes, the file itself may still be a link.
  const fs::path own = folder_ / "own";
  ASSERT_TRUE(files_.createDirectory(own));
  for (const char* name : {"file", ".file.new"}) fs::create_symlink(victims / "kept", own / name);
  EXPECT_FALSE(files_.contents(own / "file"));
  EXPECT_TRUE(files_.writeAtomically(own / "file", "new"));
  EXPECT_EQ(files_.contents(own / "file"), "new");
  EXPECT_EQ(files_.contents(victims / "kept"), "precious");
}

TEST_F(PosixFileManagerTest, APipeHasNoContents) {
  ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
  EXPECT_FALSE(files_.contents(file_));
}

TEST_F(PosixFileManagerTest, AWriteThatCannotBeLeavesNothingBehind) {
  fs::create_directory(file_);
  EXPECT_FALSE(files_.writeAtomically(file_, "new"));
  EXPECT_EQ(filesInFolder(), 1);
  EXPECT_FALSE(files_.writeAtomically(folder_ / "missing" / "file", "new"));
  EXPECT_FALSE(files_.writeAtomically(folder_ / std::string(300, 'x'), "new"));
  fs::create_symlink("circle", folder_ / "circle");
  EXPECT_FALSE(files_.writeAtomically(folder_ / "circle", "new"));
  EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(PosixFileManagerTest, AFolderWithoutPermissionKeepsItsFile) {
  ASSERT_TRUE(files_.writeAtomically(file_, "old"));
  fs::permissions(folder_, fs::perms{0555});
  EXPECT_FALSE(inChild([this] {
    if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) return true;
    return files_.writeAtomically(file_, "new");
  }));
  fs::permissions(folder_, fs::perms{0755});
  EXPECT_EQ(files_.contents(file_), "old");
}

TEST_F(PosixFileManagerTest, AFullDiskKeepsTheOldFileAndNothingElse) {
  ASSERT_TRUE(files_.writeAtomically(file_, "old"));
  EXPECT_FALSE(inChild([this] {
    const rlimit limit{100000, 100000};
    if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || setrlimit(RLIMIT_FSIZE, &limit) != 0) return true;
    return files_.writeAtomically(file_, std::string(200000, 'x'));
  }));
  EXPECT_EQ(files_.contents(file_), "old");
  EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(PosixFileManagerTest, ALinkStaysAndItsTargetIsReplaced) {
  fs::create_directory(folder_ / "elsewhere");
  fs::create_symlink("elsewhere/kept.json", file_);
  EXPECT_FALSE(files_.fileExists(file_));
  EXPECT_TRUE(files_.writeAtomically(file_, "first"));
  EXPECT_TRUE(files_.writeAtomically(file_, "second"));
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_EQ(files_.contents(folder_ / "elsewhere" / "kept.json"), "second");
}

TEST_F(PosixFileManagerTest, ALivingWritersFileIsLeftAloneAndADeadOnesIsRemoved) {
  ASSERT_TRUE(files_.writeAtomically(file_, "old"));
  {
    const FileDescriptor living(open(replacement_.c_str(), O_WRONLY | O_CREAT, 0644));
    ASSERT_EQ(flock(living.get(), LOCK_EX), 0);
    EXPECT_FALSE(files_.writeAtomically(file_, "new"));
    EXPECT_EQ(files_.contents(file_), "old");
    EXPECT_TRUE(fs::exists(replacement_));
  }
  EXPECT_TRUE(files_.writeAtomically(file_, "new"));
  EXPECT_EQ(files_.contents(file_), "new");
  fs::create_symlink("/etc/nowhere", replacement_);
  EXPECT_TRUE(files_.writeAtomically(file_, "newer"));
  EXPECT_EQ(filesInFolder(), 1);
}

// The lengths differ too, so that a mixture of two contents is always noticed.
std::string contentsNumber(std::size_t number) {
  return std::string(200000 + number % 26 * 10007, static_cast<char>('a' + number % 26));
}

bool isOneOfTheContents(const std::string& contents) {
  return !contents.empty() && contents == contentsNumber(static_cast<std::size_t>(contents[0] - 'a'));
}

TEST_F(PosixFileManagerTest, AWriterKilledAtAnyInstantLeavesTheOldOrTheNewFileWhole) {
  using Clock = std::chrono::steady_clock;
  std::mt19937 random(7);
  const auto begin = Clock::now();
  ASSERT_TRUE(files_.writeAtomically(file_, contentsNumber(0)));
  const auto duration = std::max<Clock::duration>(Clock::now() - begin, std::chrono::microseconds(100));
  int killedInTheMiddle = 0;
  for (int kill = 0; kill < 300; ++kill) {
    std::array<int, 2> written{};
    ASSERT_EQ(pipe(written.data()), 0);
    const pid_t writer = fork();
    if (writer == 0) {
      for (std::size_t number = 1;; ++number) {
        const bool success = files_.writeAtomically(file_, contentsNumber(number));
        if (!success || write(written[1], "x", 1) != 1) _exit(1);
      }
    }
    char byte = 0;
    close(written[1]);
    ASSERT_EQ(read(written[0], &byte, 1), 1);
    const auto instant = Clock::now() + duration * static_cast<int>(random() % 200) / 100;
    while (Clock::now() < instant) continue;
    ::kill(writer, SIGKILL);
    int status = 0;
    waitpid(writer, &status, 0);
    close(written[0]);
    ASSERT_TRUE(WIFSIGNALED(status));
    const auto contents = files_.contents(file_);
    ASSERT_TRUE(contents && isOneOfTheContents(*contents)) << "after kill " << kill;
    ASSERT_LE(filesInFolder(), 2);
    killedInTheMiddle += fs::exists(replacement_) ? 1 : 0;
  }
  RecordProperty("killedInTheMiddle", killedInTheMiddle);
  EXPECT_GT(killedInTheMiddle, 0) << "no kill hit a write, so this proved nothing";
  EXPECT_TRUE(files_.writeAtomically(file_, contentsNumber(3)));
  EXPECT_EQ(filesInFolder(), 1);
}

}  // namespace
}  // namespace tavelo::posix
