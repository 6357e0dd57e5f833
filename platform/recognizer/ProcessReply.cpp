#include "platform/recognizer/ProcessReply.h"

#include <limits>

#include <nlohmann/json.hpp>

namespace tavelo::recognizer {
namespace {

using Json = nlohmann::json;
using Kind = ProcessReply::Kind;

std::optional<std::string> stringMember(const Json& object, const char* name) {
  const auto member = object.find(name);
  if (member == object.end() || !member->is_string()) return std::nullopt;
  return member->get<std::string>();
}

std::optional<std::uint64_t> numberMember(const Json& object, const char* name) {
  const auto member = object.find(name);
  if (member == object.end() || !member->is_number_unsigned()) return std::nullopt;
  return member->get<std::uint64_t>();
}

ProcessReply stateReply(const Json& object, const std::string& state) {
  if (state == "ready") {
    const auto version = stringMember(object, "version").value_or("");
    return {.kind = Kind::ready,
            .text = stringMember(object, "engine").value_or("") + (version.empty() ? "" : " " + version)};
  }
  if (state == "failed")
    return {.kind = Kind::loadFailed, .text = stringMember(object, "reason").value_or("")};
  return {};
}

}  // namespace

std::optional<ProcessReply> ProcessReply::parse(std::string_view line) {
  const Json object = Json::parse(line, nullptr, /*allow_exceptions=*/false);
  if (!object.is_object()) return std::nullopt;
  if (const auto state = stringMember(object, "state")) return stateReply(object, *state);
  const auto dictation = numberMember(object, "dictation");
  if (!dictation) return ProcessReply{};
  if (*dictation > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  ProcessReply reply{.dictation = static_cast<std::uint32_t>(*dictation), .text = {}};
  if (auto text = stringMember(object, "text")) {
    reply.kind = Kind::text;
    reply.text = *std::move(text);
  } else if (auto closed = stringMember(object, "closed")) {
    const auto until = numberMember(object, "until");
    if (!until) return std::nullopt;
    reply.kind = Kind::closed;
    reply.text = *std::move(closed);
    reply.until = *until;
  } else if (const auto taken = numberMember(object, "taken")) {
    reply.kind = Kind::taken;
    reply.until = *taken;
  } else if (auto failed = stringMember(object, "failed")) {
    reply.kind = Kind::failed;
    reply.text = *std::move(failed);
  } else if (const auto final = object.find("final"); final != object.end() && *final == true) {
    reply.kind = Kind::final;
  }
  return reply;
}

}  // namespace tavelo::recognizer
