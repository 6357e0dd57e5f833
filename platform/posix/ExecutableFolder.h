#pragma once

#include <filesystem>

namespace tavelo::posix {

/// The folder of the running program's file; empty if the system does not say. Any thread.
std::filesystem::path executableFolder();

}  // namespace tavelo::posix
