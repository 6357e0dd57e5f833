#pragma once

#include <filesystem>

namespace tavelo {

namespace platform {
class FileManager;
}

/// Where the recent dictations are kept: below the application-support directory, or below the temporary one
/// when the platform names none. Looks at nothing on disk and makes nothing. Main thread.
std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager);

}  // namespace tavelo
