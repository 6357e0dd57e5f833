#include "platform/posix/ExecutableFolder.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#ifdef __APPLE__
#include <array>

#include <mach-o/dyld.h>
#endif

#include <unistd.h>

namespace tavelo::posix {
namespace {

std::filesystem::path findExecutable() {
  std::error_code error;
#ifdef __APPLE__
  std::array<char, 4096> path{};
  auto size = static_cast<std::uint32_t>(path.size());
  if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
  return std::filesystem::canonical(path.data(), error);
#else
  return std::filesystem::read_symlink("/proc/self/exe", error);
#endif
}

}  // namespace

std::filesystem::path executableFolder() { return findExecutable().parent_path(); }

const std::filesystem::path& executableFile() {
  static const auto file = findExecutable();
  return file;
}

std::string startInThisProcess(const std::filesystem::path& file) {
  std::string path = file.string();
  char* const arguments[] = {path.data(), nullptr};
  ::execv(path.c_str(), arguments);
  return path + ": " + std::strerror(errno);
}

}  // namespace tavelo::posix
