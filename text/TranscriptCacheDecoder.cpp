#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "text/InternetDateTime.h"
#include "text/JsonCharacters.h"
#include "text/TranscriptCacheFormat.h"

namespace tavelo {
namespace {

constexpr std::array<std::string_view, 7> keys{"createdAt",
                                               "id",
                                               "localeIdentifier",
                                               "normalizedText",
                                               "rawTranscript",
                                               "sourceAppName",
                                               "sourceBundleIdentifier"};
constexpr std::size_t requiredKeys = 5;

/// Builds the entries while the parser reads, without a document tree. Every operation returns whether the
/// parser should go on.
class EntryReader final : public nlohmann::json_sax<nlohmann::json> {
 public:
  std::vector<TranscriptCacheEntry> takeEntries() { return std::move(entries_); }

  bool null() override { return skips() || (inEntry() && key_ >= requiredKeys); }
  bool boolean(bool) override { return skips(); }
  bool number_integer(number_integer_t) override { return skips(); }
  bool number_unsigned(number_unsigned_t) override { return skips(); }
  bool number_float(number_float_t, const string_t&) override { return skips(); }
  bool binary(binary_t&) override { return false; }

  bool string(string_t& value) override {
    if (skips()) return true;
    return inEntry() && set(std::move(value));
  }

  bool start_array(std::size_t) override { return depth_ == 0 ? ++depth_ > 0 : skipNested(); }

  bool end_array() override {
    --depth_;
    return true;
  }

  bool start_object(std::size_t) override {
    if (depth_ != 1) return depth_ > 1 && skipNested();
    ++depth_;
    entry_ = {};
    found_ = 0;
    return true;
  }

  bool key(string_t& name) override {
    if (!inEntry()) return true;
    for (key_ = 0; key_ < keys.size() && keys[key_] != name;) ++key_;
    return true;
  }

  bool end_object() override {
    if (--depth_ != 1) return true;
    constexpr unsigned allRequired = (1U << requiredKeys) - 1;
    if ((found_ & allRequired) != allRequired) return false;
    entries_.push_back(std::move(entry_));
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
    return false;
  }

 private:
  bool inEntry() const { return depth_ == 2; }

  /// Whether the parser is inside a member that we skip.
  bool skips() const { return depth_ > 2 || (inEntry() && key_ == keys.size()); }

  bool skipNested() {
    if (!skips()) return false;
    ++depth_;
    return true;
  }

  bool set(std::string value) {
    found_ |= 1U << key_;
    switch (key_) {
      case 0:
        return assign(entry_.createdAt, parseInternetDateTime(value));
      case 1:
        return assign(entry_.id, platform::Uuid::parse(value));
      case 2:
        entry_.localeIdentifier = std::move(value);
        return true;
      case 3:
        entry_.normalizedText = std::move(value);
        return true;
      case 4:
        entry_.rawTranscript = std::move(value);
        return true;
      case 5:
        entry_.sourceAppName = std::move(value);
        return true;
      default:
        entry_.sourceBundleIdentifier = std::move(value);
        return true;
    }
  }

  template <class Value>
  static bool assign(Value& member, const std::optional<Value>& value) {
    if (value) member = *value;
    return value.has_value();
  }

  std::vector<TranscriptCacheEntry> entries_;
  TranscriptCacheEntry entry_;
  /// Number of open arrays and objects: 1 in the list, 2 in an entry, more in a skipped member.
  std::size_t depth_ = 0;
  /// Index in `keys` of the current member; `keys.size()` for an unknown one.
  std::size_t key_ = keys.size();
  /// The members found in the current entry, one bit each.
  unsigned found_ = 0;
};

}  // namespace

std::optional<std::vector<TranscriptCacheEntry>> TranscriptCacheDecoder::decode(std::string_view json) const {
  EntryReader reader;
  const bool complete =
      nlohmann::json::sax_parse(JsonCharacters(json), JsonCharacters(std::string_view{}), &reader);
  if (!complete) return std::nullopt;
  return reader.takeEntries();
}

}  // namespace tavelo
