#include "platform/posix/ExecutableFolder.h"

#include <string>
#include <string_view>
#include <system_error>

#ifdef __APPLE__
#include <array>

#include <mach-o/dyld.h>
#endif

namespace tavelo::posix {

std::filesystem::path executableFile() {
  std::error_code error;
#ifdef __APPLE__
  std::array<char, 4096> path{};
  auto size = static_cast<std::uint32_t>(path.size());
  if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
  return std::filesystem::canonical(path.data(), error);
#else
  // What the kernel appends once the file has been replaced or removed.
  constexpr std::string_view deleted = " (deleted)";
  auto file = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (file.ends_with(deleted)) file.resize(file.size() - deleted.size());
  return file;
#endif
}

std::filesystem::path executableFolder() { return executableFile().parent_path(); }

}  // namespace tavelo::posix
