#include "recognizer/vosk/VoskReply.h"

#include <nlohmann/json.hpp>

namespace tavelo::recognition {
namespace {

using Json = nlohmann::json;

/// The first element of an array; null when `list` is not an array or is empty.
const Json* firstElement(const Json& list) {
  return list.is_array() && !list.empty() ? &list.front() : nullptr;
}

/// Copies a string member, if present. Returns false when the member is not a string.
bool readString(const Json& object, const char* name, std::optional<std::string>& value) {
  const auto member = object.find(name);
  if (member == object.end()) return true;
  const auto* string = member->get_ptr<const Json::string_t*>();
  if (string == nullptr) return false;
  value = *string;
  return true;
}

/// Absent as `parse` says. `object` may be null.
std::optional<VoskReply> read(const Json* object) {
  if (object == nullptr || !object->is_object()) return std::nullopt;
  if (const auto alternatives = object->find("alternatives"); alternatives != object->end()) {
    object = firstElement(*alternatives);
    if (object == nullptr || !object->is_object()) return std::nullopt;
  }

  VoskReply reply;
  if (!readString(*object, "partial", reply.partial) || !readString(*object, "text", reply.text))
    return std::nullopt;
  if (!reply.partial && !reply.text) return std::nullopt;
  return reply;
}

}  // namespace

std::optional<VoskReply> VoskReply::parse(std::string_view json) {
  const Json document = Json::parse(json, nullptr, /*allow_exceptions=*/false);
  return read(&document);
}

std::optional<VoskReply> VoskReply::parseFromServer(std::string_view json) {
  const Json document = Json::parse(json, nullptr, /*allow_exceptions=*/false);
  return read(document.is_array() ? firstElement(document) : &document);
}

}  // namespace tavelo::recognition
