#include "models/Unpacking.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "language/Language.h"
#include "language/SystemErrors.h"
#include "language/Texts.h"

namespace tavelo::models {
namespace {

using language::say;
namespace words = language::words;

namespace fs = std::filesystem;
using Kind = UnpackFailure::Kind;
using Result = std::optional<UnpackFailure>;

// Models and libraries hardly shrink, so that an archive may not grow much. The least lets small ones hold
// text.
constexpr std::int64_t mostGrowth = 20;
constexpr std::int64_t leastLimit = 16 << 20;
constexpr std::int64_t mostUnpacked = std::int64_t{2} << 30;
constexpr int mostEntries = 10'000;
/// Each entry may bring as many folders.
constexpr int mostLevels = 10;

struct CloseArchive {
  void operator()(archive* reader) const { archive_read_free(reader); }
};

UnpackFailure refuse(std::string why) { return {Kind::archive, std::move(why)}; }
/// Such an archive would fail again each time, so it must not be kept.
UnpackFailure nameTooLong() { return refuse(say(words::nameTooLong)); }
UnpackFailure cannotWrite(const fs::path& path) {
  if (errno == ENAMETOOLONG) return nameTooLong();
  return {Kind::disk, say(words::cannotWriteTo, {path.string(), language::systemError(errno)})};
}

/// The path below the folder that an entry's name stands for; absent if it leads elsewhere.
std::optional<fs::path> safePath(const char* name) {
  const std::string_view text = name == nullptr ? "" : name;
  if (text.empty() || text.starts_with('/') || text.find('\\') != std::string_view::npos) return std::nullopt;
  fs::path path;
  for (const auto& part : fs::path(text)) {
    if (part == "..") return std::nullopt;
    if (part != "." && !part.empty()) path /= part;
  }
  return path;
}

/// Whether the file begins like an archive that we read.
bool beginsLikeAnArchive(const fs::path& file) {
  std::array<char, 4> head{};
  std::ifstream(file, std::ios::binary).read(head.data(), head.size());
  const std::string_view bytes(head.data(), head.size());
  return bytes.starts_with("PK") || bytes.starts_with("BZh") || bytes.starts_with("\x1f\x8b");
}

/// One run of `unpack`.
class Unpacking final {
 public:
  Unpacking(const fs::path& file, fs::path folder, const std::atomic<bool>& cancelled)
      : file_(file), folder_(std::move(folder)), cancelled_(cancelled), reader_(archive_read_new()) {
    // The formats of the publishers, and none of the rarer readers. A zip is read by its list of contents:
    // without the list, which is at the end, it is not whole.
    archive_read_support_format_tar(reader_.get());
    archive_read_support_format_zip_seekable(reader_.get());
    archive_read_support_filter_gzip(reader_.get());
    archive_read_support_filter_bzip2(reader_.get());
  }

  Result run() {
    std::error_code error;
    const auto size = static_cast<std::int64_t>(fs::file_size(file_, error));
    if (error || archive_read_open_filename(reader_.get(), file_.c_str(), buffer_.size()) != ARCHIVE_OK)
      return broken();
    left_ = std::clamp(size * mostGrowth, leastLimit, mostUnpacked);
    for (int entries = 0;; ++entries) {
      if (cancelled_) return UnpackFailure{Kind::cancelled, {}};
      archive_entry* entry = nullptr;
      const int status = archive_read_next_header(reader_.get(), &entry);
      if (status == ARCHIVE_EOF && entries > 0) return std::nullopt;
      if (status != ARCHIVE_OK && status != ARCHIVE_WARN) return broken();
      if (entries == mostEntries) return refuse(say(words::tooManyFiles));
      if (auto failure = take(entry)) return failure;
    }
  }

 private:
  UnpackFailure broken() const {
    if (beginsLikeAnArchive(file_)) return refuse(say(words::notWhole));
    return refuse(say(words::notAnArchive));
  }

  Result take(archive_entry* entry) {
    const char* name = archive_entry_pathname(entry);
    // Null where the user's locale cannot express the name.
    const auto path = safePath(name != nullptr ? name : archive_entry_pathname_utf8(entry));
    if (!path) return refuse(say(words::leadsOutside));
    if (std::distance(path->begin(), path->end()) > mostLevels) return nameTooLong();
    const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
    if ((!isFolder && archive_entry_filetype(entry) != AE_IFREG) || archive_entry_hardlink(entry) != nullptr)
      return refuse(say(words::neitherFileNorFolder));
    const fs::path folder = folder_ / (isFolder ? *path : path->parent_path());
    std::error_code error;
    fs::create_directories(folder, error);
    // A file of the archive in the place of a folder.
    if (error == std::errc::not_a_directory || error == std::errc::file_exists)
      return refuse(say(words::nameTwice));
    if (error) {
      errno = error.value();
      return cannotWrite(folder);
    }
    if (isFolder) return std::nullopt;
    return path->empty() ? refuse(say(words::fileWithoutName)) : write(entry, folder_ / *path);
  }

  Result write(archive_entry* entry, const fs::path& path) {
    if (archive_entry_size_is_set(entry) != 0 && archive_entry_size(entry) > left_) return tooMuch();
    // The folder is ours alone and there are no links in it, so the name is all there is to open.
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (file < 0) return errno == EEXIST ? refuse(say(words::nameTwice)) : cannotWrite(path);
    auto failure = copyInto(file, path);
    if (!failure && ::fsync(file) != 0) failure = cannotWrite(path);
    if (::close(file) != 0 && !failure) failure = cannotWrite(path);
    return failure;
  }

  Result copyInto(int file, const fs::path& path) {
    for (;;) {
      if (cancelled_) return UnpackFailure{Kind::cancelled, {}};
      // Fills holes with zeros, so that they count.
      const auto got = archive_read_data(reader_.get(), buffer_.data(), buffer_.size());
      if (got == 0) return std::nullopt;
      if (got < 0) return broken();
      left_ -= got;
      if (left_ < 0) return tooMuch();
      for (la_ssize_t at = 0; at < got;) {
        const auto written = ::write(file, buffer_.data() + at, static_cast<std::size_t>(got - at));
        if (written < 0 && errno != EINTR) return cannotWrite(path);
        if (written > 0) at += written;
      }
    }
  }

  static UnpackFailure tooMuch() { return refuse(say(words::growsTooMuch)); }

  const fs::path& file_;
  const fs::path folder_;
  const std::atomic<bool>& cancelled_;
  std::unique_ptr<archive, CloseArchive> reader_;
  /// Bytes that may still be unpacked.
  std::int64_t left_ = 0;
  std::array<char, 65536> buffer_{};
};

}  // namespace

Result unpack(const fs::path& archive, const fs::path& folder, const std::atomic<bool>& cancelled) {
  return std::make_unique<Unpacking>(archive, folder, cancelled)->run();
}

}  // namespace tavelo::models
