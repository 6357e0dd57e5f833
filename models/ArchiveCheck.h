#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <vector>

namespace tavelo::models {

/// A checksum that an archive must have.
struct Checksum {
  enum class Source {
    /// The user named it.
    given,
    /// It is part of this program.
    pinned,
    /// The publisher's list has it.
    published
  };
  Source source = Source::given;
  /// Hexadecimal, in lower case. Its length tells its kind: MD5, SHA-256 or SHA-512.
  std::string hex;
};

/// Checksums are compared in lower case.
std::string lowerCase(std::string hex);

bool isSha256(const std::string& hex);

/// Whether it is as long as one of the kinds, and hexadecimal in lower case.
bool isChecksum(const std::string& hex);

struct ArchiveCheckResult {
  /// Of the archive; empty if it cannot be read.
  std::string sha256;
  /// A clause that follows the name of the archive, such as "has the MD5 checksum …, not …"; empty if it
  /// fits.
  std::string flaw;
};

/// Compares an archive with the checksums. Blocking; any thread; stops early once `cancelled`.
ArchiveCheckResult checkArchive(const std::filesystem::path& archive, const std::vector<Checksum>& checksums,
                                const std::atomic<bool>& cancelled);

}  // namespace tavelo::models
