#include "recognizer/model/OnnxFile.h"

#include <charconv>
#include <cstdint>
#include <sstream>

namespace tavelo::recognition {
namespace {

/// Limits of the metadata. Real models have some twenty short entries.
constexpr std::uint64_t largestEntry = 64UL * 1024;
constexpr std::size_t mostEntries = 1024;

/// Numbers of the fields that we need.
constexpr std::uint64_t graphField = 7;
constexpr std::uint64_t metadataField = 14;
constexpr std::uint64_t keyField = 1;
constexpr std::uint64_t valueField = 2;

/// Reads the fields of a protocol-buffer message one by one, without holding more than one of them in memory.
class FieldReader final {
 public:
  explicit FieldReader(std::istream& stream) : stream_(stream) {
    const auto start = stream_.tellg();
    stream_.seekg(0, std::ios::end);
    const auto end = stream_.tellg();
    stream_.seekg(start);
    if (stream_ && end >= start) left_ = static_cast<std::uint64_t>(end - start);
  }

  /// Moves to the next field. False at the end, or when the message is broken.
  bool next() {
    if (broken_ || !skip(size_)) return false;
    size_ = 0;
    if (left_ == 0) return false;
    const auto tag = varint();
    if (!tag || *tag >> 3 == 0 || !readSize(*tag & 7)) {
      broken_ = true;
      return false;
    }
    field_ = *tag >> 3;
    return true;
  }

  bool isBroken() const { return broken_; }
  std::uint64_t field() const { return field_; }
  bool isBytes() const { return bytes_; }
  std::uint64_t size() const { return size_; }

  /// The current field's bytes; absent when there are more than `limit`, or fewer than the message promised.
  std::optional<std::string> take(std::uint64_t limit) {
    if (!bytes_ || size_ > limit) return std::nullopt;
    std::string bytes(size_, '\0');
    if (!stream_.read(bytes.data(), static_cast<std::streamsize>(size_))) return std::nullopt;
    left_ -= size_;
    size_ = 0;
    return bytes;
  }

 private:
  bool readSize(std::uint64_t kind) {
    bytes_ = kind == 2;
    switch (kind) {
      case 0:
        return varint().has_value();
      case 1:
        size_ = 8;
        break;
      case 2: {
        const auto size = varint();
        if (!size) return false;
        size_ = *size;
        break;
      }
      case 5:
        size_ = 4;
        break;
      default:
        return false;
    }
    return size_ <= left_;
  }

  std::optional<std::uint64_t> varint() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64 && left_ > 0; shift += 7) {
      const auto byte = stream_.get();
      if (byte < 0) return std::nullopt;
      --left_;
      value |= static_cast<std::uint64_t>(byte & 0x7f) << shift;
      if ((byte & 0x80) == 0) return value;
    }
    return std::nullopt;
  }

  bool skip(std::uint64_t count) {
    if (count == 0) return true;
    stream_.seekg(static_cast<std::streamoff>(count), std::ios::cur);
    left_ -= count;
    return static_cast<bool>(stream_);
  }

  std::istream& stream_;
  std::uint64_t left_ = 0;
  std::uint64_t field_ = 0;
  std::uint64_t size_ = 0;
  bool bytes_ = false;
  bool broken_ = false;
};

bool readEntry(const std::string& bytes, OnnxFile& file) {
  std::istringstream stream{bytes};
  FieldReader fields{stream};
  std::string key;
  std::string value;
  while (fields.next()) {
    if (fields.field() != keyField && fields.field() != valueField) continue;
    const bool isKey = fields.field() == keyField;
    auto text = fields.take(largestEntry);
    if (!text) return false;
    (isKey ? key : value) = std::move(*text);
  }
  file.metadata[key] = std::move(value);
  return !fields.isBroken() && file.metadata.size() <= mostEntries;
}

}  // namespace

std::optional<OnnxFile> OnnxFile::read(std::istream& stream) {
  OnnxFile file;
  bool hasGraph = false;
  FieldReader fields{stream};
  while (fields.next()) {
    if (fields.field() == graphField) hasGraph = fields.isBytes() && fields.size() > 0;
    if (fields.field() != metadataField) continue;
    const auto entry = fields.take(largestEntry);
    if (!entry || !readEntry(*entry, file)) return std::nullopt;
  }
  if (fields.isBroken() || !hasGraph || !stream) return std::nullopt;
  return file;
}

std::optional<long> OnnxFile::number(std::string_view key) const {
  const auto entry = metadata.find(key);
  if (entry == metadata.end()) return std::nullopt;
  const std::string& text = entry->second;
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace tavelo::recognition
