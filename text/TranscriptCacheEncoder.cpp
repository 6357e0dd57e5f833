#include <cstddef>
#include <optional>
#include <string_view>

#include "text/InternetDateTime.h"
#include "text/TranscriptCacheFormat.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

/// For each control character, the letter of its two-character escape, or 'u' if it has none.
constexpr std::string_view controlEscapes = "uuuuuuuubtnufruuuuuuuuuuuuuuuuuu";

void appendEscaped(std::string& json, char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (c == '"' || c == '\\' || c == '/') {
    json += '\\';
    json += c;
  } else if (byte < controlEscapes.size()) {
    json += '\\';
    json += controlEscapes[byte];
    if (controlEscapes[byte] != 'u') return;
    json += byte < 0x10 ? "000" : "001";
    json += "0123456789abcdef"[byte & 0x0F];
  } else {
    json += c;
  }
}

void appendString(std::string& json, std::string_view text) {
  json += '"';
  for (const char c : text) appendEscaped(json, c);
  json += '"';
}

/// Writes the members of one object. The caller must add them in the order of their keys.
class MemberWriter final {
 public:
  explicit MemberWriter(std::string& json) : json_(json) {}

  void add(std::string_view key, const std::optional<std::string>& value) {
    if (!value) return;
    json_ += first_ ? "\n    " : ",\n    ";
    first_ = false;
    appendString(json_, key);
    json_ += " : ";
    appendString(json_, unicode::wellFormed(*value));
  }

 private:
  std::string& json_;
  bool first_ = true;
};

void appendEntry(std::string& json, const TranscriptCacheEntry& entry) {
  json += "{";
  MemberWriter members(json);
  members.add("createdAt", internetDateTime(entry.createdAt));
  members.add("id", entry.id.string());
  members.add("localeIdentifier", entry.localeIdentifier);
  members.add("normalizedText", entry.normalizedText);
  members.add("rawTranscript", entry.rawTranscript);
  members.add("sourceAppName", entry.sourceAppName);
  members.add("sourceBundleIdentifier", entry.sourceBundleIdentifier);
  json += "\n  }";
}

}  // namespace

std::string TranscriptCacheEncoder::encode(std::span<const TranscriptCacheEntry> entries) const {
  if (entries.empty()) return "[]";
  std::string json = "[";
  for (const TranscriptCacheEntry& entry : entries) {
    json += json.size() > 1 ? ",\n  " : "\n  ";
    appendEntry(json, entry);
  }
  return json + "\n]";
}

}  // namespace tavelo
