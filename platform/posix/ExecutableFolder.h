#pragma once

#include <filesystem>

namespace tavelo::posix {

/// The file of the running program; empty if the system does not say. If the file was replaced meanwhile, the
/// one that took its place. Any thread.
std::filesystem::path executableFile();

/// The folder of the running program's file; empty if the system does not say. Any thread.
std::filesystem::path executableFolder();

}  // namespace tavelo::posix
