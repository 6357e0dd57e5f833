#include "platform/linux/session/FileWatcher.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace tavelo::linuxdesktop {
namespace {

namespace fs = std::filesystem;

/// Editors make several changes when they save, some of which leave no file for a moment.
constexpr std::chrono::milliseconds settling{200};
constexpr std::chrono::seconds blindInterval{10};
constexpr int longestChain = 40;

constexpr std::uint32_t changes = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                  IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

}  // namespace

FileWatcher::FileWatcher(fs::path file, std::function<void()> changed) : file_(std::move(file)) {
  pause_.setSingleShot(true);
  QObject::connect(&pause_, &QTimer::timeout, &pause_, [this, changed = std::move(changed)] {
    // First, so that a change while `changed` runs is not missed.
    watch();
    changed();
  });
  watch();
}

/// Begins anew each time: folders may have come, gone, or become links.
void FileWatcher::watch() {
  notifier_.reset();
  names_.clear();
  events_ = posix::FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  bool watching = true;
  std::error_code error;
  fs::path each = file_;
  for (int links = 0; links < longestChain && !error; ++links) {
    watching = watchEntry(each) && watching;
    each = each.parent_path() / fs::read_symlink(each, error);
  }
  if (!watching) return pause_.start(blindInterval);
  notifier_ = std::make_unique<QSocketNotifier>(events_.get(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, &pause_, [this] { readEvents(); });
}

/// Watches the folder of `entry` and the folder above; if the first is missing, the nearest ones that exist.
bool FileWatcher::watchEntry(const fs::path& entry) {
  int folders = 0;
  for (fs::path each = entry; each.has_relative_path() && folders < 2; each = each.parent_path()) {
    const int folder = inotify_add_watch(events_.get(), each.parent_path().c_str(), changes);
    if (folder < 0) continue;
    names_.emplace(folder, each.filename());
    ++folders;
  }
  return folders > 0;
}

void FileWatcher::readEvents() {
  bool matters = false;
  alignas(inotify_event) std::array<char, 4096> piece{};
  ssize_t count = 0;
  while ((count = read(events_.get(), piece.data(), piece.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      inotify_event event{};
      std::memcpy(&event, piece.data() + at, sizeof event);
      // Without a name it is about the folder itself, or events were lost.
      const auto [first, last] = names_.equal_range(event.wd);
      const char* name = piece.data() + at + sizeof event;
      matters = matters || event.len == 0 ||
                std::any_of(first, last, [name](const auto& each) { return each.second == name; });
      at += sizeof event + event.len;
    }
  }
  if (matters && !pause_.isActive()) pause_.start(settling);
}

}  // namespace tavelo::linuxdesktop
