#include "language/SystemErrors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::language {
namespace {

struct SystemError {
  int number;
  Text words;
};

/// The errors that a user meets. The others are told by their number.
constexpr std::array errors{
    SystemError{ENOENT, {"No such file or directory", "không có tệp hay thư mục đó"}},
    SystemError{EACCES, {"Permission denied", "không có quyền"}},
    SystemError{EPERM, {"Operation not permitted", "không được phép"}},
    SystemError{EISDIR, {"Is a directory", "đó là một thư mục"}},
    SystemError{ENOTDIR, {"Not a directory", "đó không phải là thư mục"}},
    SystemError{EEXIST, {"File exists", "đã có sẵn"}},
    SystemError{ENOSPC, {"No space left on device", "ổ đĩa đã hết chỗ"}},
    SystemError{EDQUOT, {"Disk quota exceeded", "đã dùng hết phần ổ đĩa dành cho bạn"}},
    SystemError{EFBIG, {"File too large", "tệp quá lớn"}},
    SystemError{EROFS, {"Read-only file system", "ổ đĩa chỉ cho đọc"}},
    SystemError{EIO, {"Input/output error", "lỗi khi đọc hoặc ghi ổ đĩa"}},
    SystemError{ELOOP, {"Too many levels of symbolic links", "liên kết dẫn vòng quanh"}},
    SystemError{ENAMETOOLONG, {"File name too long", "tên quá dài"}},
    SystemError{EMFILE, {"Too many open files", "chương trình đã mở quá nhiều tệp"}},
    SystemError{ENFILE, {"Too many open files in system", "cả máy đã mở quá nhiều tệp"}},
    SystemError{ENOMEM, {"Cannot allocate memory", "không đủ bộ nhớ"}},
    SystemError{EAGAIN, {"Resource temporarily unavailable", "máy đang quá tải"}},
    SystemError{EBADF, {"Bad file descriptor", "đã bị đóng"}},
    SystemError{EINVAL, {"Invalid argument", "không dùng được"}},
    SystemError{EPIPE, {"Broken pipe", "không còn ai đọc"}},
    SystemError{ENXIO, {"No such device or address", "không có thiết bị đó"}},
    SystemError{ENOEXEC, {"Exec format error", "không phải là chương trình chạy được"}},
    SystemError{ESTALE, {"Stale file handle", "ổ đĩa mạng đã đổi, tệp không còn ở đó"}},
};

}  // namespace

std::string systemError(int number) {
  if (current() == Language::english) return std::strerror(number);
  const auto found = std::ranges::find(errors, number, &SystemError::number);
  return found != errors.end() ? say(found->words) : say(words::systemFailure, {std::to_string(number)});
}

std::string systemError(const std::string& englishWords) {
  const auto found =
      std::ranges::find_if(errors, [&](const auto& each) { return each.words.english == englishWords; });
  return found != errors.end() ? say(found->words) : englishWords;
}

}  // namespace tavelo::language
