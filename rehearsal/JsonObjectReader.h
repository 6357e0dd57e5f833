#pragma once

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace tavelo::rehearsal {

/// Says in one line where a story is wrong. `parseStory` catches it.
class StoryError final : public std::exception {
 public:
  explicit StoryError(std::string line) : line_(std::move(line)) {}
  StoryError(const std::string& path, const std::string& what) : StoryError(path + ": " + what) {}

  /// The whole line. `what` ends at a zero byte, which the names in a story may hold.
  const std::string& line() const { return line_; }
  const char* what() const noexcept override { return line_.c_str(); }

 private:
  std::string line_;
};

/// Reads the members of one JSON object. `finish` rejects members that nobody read, so that a misspelt key
/// cannot switch a check off. Every failure throws a `StoryError` that names the place.
class JsonObjectReader final {
 public:
  JsonObjectReader(const nlohmann::ordered_json& value, std::string path);

  const std::string& path() const { return path_; }
  std::string pathOf(const std::string& key) const { return path_ + "." + key; }

  /// The member, or null if there is none. Counts as read.
  const nlohmann::ordered_json* find(const std::string& key);
  const nlohmann::ordered_json& require(const std::string& key);

  std::string string(const std::string& key);
  std::string stringOr(const std::string& key, std::string fallback);
  bool booleanOr(const std::string& key, bool fallback);
  double number(const std::string& key);
  /// The member's elements, each with its path; empty if there is no member.
  std::vector<std::pair<const nlohmann::ordered_json*, std::string>> list(const std::string& key);

  /// Sets `value` to the choice that the member names; leaves it as it is if there is no member.
  template <class Value>
  void choose(const std::string& key, Value& value,
              std::initializer_list<std::pair<const char*, Value>> choices) {
    if (find(key) != nullptr) value = choice(key, choices);
  }
  template <class Value>
  Value choice(const std::string& key, std::initializer_list<std::pair<const char*, Value>> choices) {
    const std::string word = string(key);
    for (const auto& [name, value] : choices) {
      if (word == name) return value;
    }
    throw StoryError(pathOf(key), "“" + word + "” is not known here");
  }

  /// Throws if there is a member that was not read.
  void finish() const;

 private:
  const nlohmann::ordered_json& value_;
  std::string path_;
  std::set<std::string> read_;
};

/// Throws if the value is not a string.
std::string asString(const nlohmann::ordered_json& value, const std::string& path);
double asNumber(const nlohmann::ordered_json& value, const std::string& path);

}  // namespace tavelo::rehearsal
