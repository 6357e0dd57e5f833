#include "rehearsal/JsonObjectReader.h"

namespace tavelo::rehearsal {

using Json = nlohmann::ordered_json;

std::string asString(const Json& value, const std::string& path) {
  if (!value.is_string()) throw StoryError(path, "a text is wanted");
  return value.get<std::string>();
}

double asNumber(const Json& value, const std::string& path) {
  if (!value.is_number()) throw StoryError(path, "a number is wanted");
  return value.get<double>();
}

JsonObjectReader::JsonObjectReader(const Json& value, std::string path)
    : value_(value), path_(std::move(path)) {
  if (!value.is_object()) throw StoryError(path_, "an object is wanted");
}

const Json* JsonObjectReader::find(const std::string& key) {
  read_.insert(key);
  const auto found = value_.find(key);
  return found == value_.end() ? nullptr : &*found;
}

const Json& JsonObjectReader::require(const std::string& key) {
  const auto* member = find(key);
  if (member == nullptr) throw StoryError(path_, "“" + key + "” is missing");
  return *member;
}

std::string JsonObjectReader::string(const std::string& key) { return asString(require(key), pathOf(key)); }

std::string JsonObjectReader::stringOr(const std::string& key, std::string fallback) {
  const auto* member = find(key);
  return member != nullptr ? asString(*member, pathOf(key)) : std::move(fallback);
}

bool JsonObjectReader::booleanOr(const std::string& key, bool fallback) {
  const auto* member = find(key);
  if (member == nullptr) return fallback;
  if (!member->is_boolean()) throw StoryError(pathOf(key), "true or false is wanted");
  return member->get<bool>();
}

double JsonObjectReader::number(const std::string& key) { return asNumber(require(key), pathOf(key)); }

std::vector<std::pair<const Json*, std::string>> JsonObjectReader::list(const std::string& key) {
  std::vector<std::pair<const Json*, std::string>> elements;
  const auto* member = find(key);
  if (member == nullptr) return elements;
  if (!member->is_array()) throw StoryError(pathOf(key), "a list is wanted");
  for (const auto& element : *member) {
    elements.emplace_back(&element, pathOf(key) + "[" + std::to_string(elements.size()) + "]");
  }
  return elements;
}

void JsonObjectReader::finish() const {
  for (const auto& [key, value] : value_.items()) {
    if (!read_.contains(key)) throw StoryError(path_, "“" + key + "” is not known here");
  }
}

}  // namespace tavelo::rehearsal
