#include "text/TranscriptCacheFile.h"

#include "platform/FileManager.h"

namespace tavelo {

std::filesystem::path transcriptCacheFile(const platform::FileManager& fileManager) {
  const auto support = fileManager.applicationSupportDirectory();
  return (support ? *support : fileManager.temporaryDirectory()) / "Tavelo" / "transcript-cache.json";
}

}  // namespace tavelo
