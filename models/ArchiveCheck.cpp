#include "models/ArchiveCheck.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <array>
#include <fstream>
#include <map>

#include "language/Language.h"
#include "language/Texts.h"

namespace tavelo::models {
namespace {

using language::say;
namespace words = language::words;

struct Algorithm {
  const char* name;
  QCryptographicHash::Algorithm algorithm;
};

/// By the length of their checksums.
const std::map<std::size_t, Algorithm>& algorithms() {
  static const std::map<std::size_t, Algorithm> all{{32, {"MD5", QCryptographicHash::Md5}},
                                                    {64, {"SHA-256", QCryptographicHash::Sha256}},
                                                    {128, {"SHA-512", QCryptographicHash::Sha512}}};
  return all;
}

const language::Text& flawOf(Checksum::Source source) {
  switch (source) {
    case Checksum::Source::published:
      return words::otherThanPublished;
    case Checksum::Source::pinned:
      return words::otherThanKnown;
    case Checksum::Source::given:
      break;
  }
  return words::otherSum;
}

}  // namespace

std::string lowerCase(std::string hex) {
  for (char& each : hex)
    if (each >= 'A' && each <= 'F') each = static_cast<char>(each - 'A' + 'a');
  return hex;
}

bool isSha256(const std::string& hex) { return hex.size() == 64 && isChecksum(hex); }

bool isChecksum(const std::string& hex) {
  return algorithms().contains(hex.size()) && hex.find_first_not_of("0123456789abcdef") == std::string::npos;
}

ArchiveCheckResult checkArchive(const std::filesystem::path& archive, const std::vector<Checksum>& checksums,
                                const std::atomic<bool>& cancelled) {
  std::map<std::size_t, QCryptographicHash> hashes;
  hashes.try_emplace(64, QCryptographicHash::Sha256);
  for (const auto& checksum : checksums)
    hashes.try_emplace(checksum.hex.size(), algorithms().at(checksum.hex.size()).algorithm);
  std::ifstream file(archive, std::ios::binary);
  std::array<char, 65536> chunk{};
  while (file && !cancelled) {
    file.read(chunk.data(), chunk.size());
    for (auto& [length, hash] : hashes)
      hash.addData(QByteArrayView(chunk.data(), static_cast<qsizetype>(file.gcount())));
  }
  if (!file.eof()) return {{}, say(words::unreadableArchive)};
  const auto hexOf = [&hashes](std::size_t length) {
    return hashes.at(length).result().toHex().toStdString();
  };
  for (const auto& [source, hex] : checksums) {
    const std::string found = hexOf(hex.size());
    if (found != hex) {
      return {hexOf(64), say(flawOf(source), {algorithms().at(hex.size()).name, found, hex})};
    }
  }
  return {hexOf(64), {}};
}

}  // namespace tavelo::models
