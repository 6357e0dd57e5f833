#pragma once

#include <cstdint>
#include <initializer_list>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace tavelo::rehearsal {

/// Says in one line where a story is wrong. Stays within the reader of stories.
class StoryError : public std::runtime_error {
 public:
  StoryError(const std::string& path, const std::string& what) : std::runtime_error(path + ": " + what) {}
};

/// Takes the members of one JSON object, each at most once, and complains about what nobody took: a misspelt
/// key must not turn a check into nothing. Every failure throws a `StoryError` that names the place.
class JsonObjectReader final {
 public:
  JsonObjectReader(const nlohmann::ordered_json& value, std::string path);

  const std::string& path() const { return path_; }
  std::string pathOf(const std::string& key) const { return path_ + "." + key; }

  /// The member, or null when there is none; counts as taken.
  const nlohmann::ordered_json* find(const std::string& key);
  const nlohmann::ordered_json& require(const std::string& key);

  std::string string(const std::string& key);
  std::string stringOr(const std::string& key, std::string fallback);
  bool booleanOr(const std::string& key, bool fallback);
  double number(const std::string& key);
  /// The member's elements, each with its path; empty when there is no member.
  std::vector<std::pair<const nlohmann::ordered_json*, std::string>> list(const std::string& key);

  /// The value that belongs to the member's word; `fallback` when there is no member.
  template <class Value>
  Value choiceOr(const std::string& key, std::initializer_list<std::pair<const char*, Value>> choices,
                 Value fallback) {
    return find(key) != nullptr ? choice(key, choices) : fallback;
  }
  template <class Value>
  Value choice(const std::string& key, std::initializer_list<std::pair<const char*, Value>> choices) {
    const std::string word = string(key);
    for (const auto& [name, value] : choices) {
      if (word == name) return value;
    }
    throw StoryError(pathOf(key), "“" + word + "” is not known here");
  }

  /// Complains about members that nobody has taken.
  void finish() const;

 private:
  const nlohmann::ordered_json& value_;
  std::string path_;
  std::set<std::string> taken_;
};

/// The string; throws when it is none.
std::string asString(const nlohmann::ordered_json& value, const std::string& path);
double asNumber(const nlohmann::ordered_json& value, const std::string& path);

}  // namespace tavelo::rehearsal
