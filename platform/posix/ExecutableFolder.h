#pragma once

#include <filesystem>
#include <string>

namespace tavelo::posix {

/// The folder of the running program's file; empty if the system does not say. Any thread.
std::filesystem::path executableFolder();

/// The running program's file when this was first asked; empty if the system does not say. The file may be
/// another one, or gone, by now. Any thread.
const std::filesystem::path& executableFile();

/// Replaces this process by `file`, started without arguments. Returns only if that fails, and then says why.
/// The caller has ended everything that other threads do.
std::string startInThisProcess(const std::filesystem::path& file);

}  // namespace tavelo::posix
