#include "platform/posix/ExecutableFolder.h"

#include <system_error>

#ifdef __APPLE__
#include <array>

#include <mach-o/dyld.h>
#endif

namespace tavelo::posix {

std::filesystem::path executableFolder() {
  std::error_code error;
#ifdef __APPLE__
  std::array<char, 4096> path{};
  auto size = static_cast<std::uint32_t>(path.size());
  if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
  return std::filesystem::canonical(path.data(), error).parent_path();
#else
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
#endif
}

}  // namespace tavelo::posix
