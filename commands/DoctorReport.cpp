#include "commands/DoctorReport.h"

#include <algorithm>
#include <cstddef>

#include <nlohmann/json.hpp>

namespace tavelo {
namespace {

using Json = nlohmann::ordered_json;

/// Whether the name of a file or folder ends here.
bool endsName(const std::string& text, std::size_t at) {
  return at >= text.size() || std::string_view("/ :;,)\"'”").find(text[at]) != std::string_view::npos ||
         static_cast<unsigned char>(text[at]) >= 0x80;
}

/// Replaces `name` wherever it is a whole path, or a whole part of one.
void replaceName(std::string& text, const std::string& name, const std::string& by) {
  for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at)) {
    if (endsName(text, at + name.size())) {
      text.replace(at, name.size(), by);
      at += by.size();
    } else {
      at += name.size();
    }
  }
}

/// Of an address only the scheme and the server stay: a password or a key may stand anywhere else in it, and
/// also in one that is written wrongly.
void leaveOutSecrets(std::string& text) {
  for (auto at = text.find(":/"); at != std::string::npos; at = text.find(":/", at + 2)) {
    const auto begin = text.find_first_not_of('/', at + 1);
    if (begin == std::string::npos) return;
    const auto end = std::min(text.find(' ', begin), text.size());
    auto server = text.substr(begin, end - begin);
    server.erase(0, server.rfind('@') + 1);
    const auto rest = server.find_first_of("/?#");
    if (rest != std::string::npos) server.replace(rest, std::string::npos, "/…");
    text.replace(begin, end - begin, server);
  }
}

std::string withoutTheUser(std::string text, const DoctorReport& report) {
  leaveOutSecrets(text);
  if (report.home.size() > 1) replaceName(text, report.home, "~");
  if (!report.user.empty()) replaceName(text, "/" + report.user, "/…");
  return text;
}

const char* keyOf(Verdict verdict) {
  if (verdict == Verdict::fine) return "fine";
  return verdict == Verdict::limited ? "limited" : "broken";
}

}  // namespace

std::string toJson(const DoctorReport& report) {
  Json findings = Json::array();
  for (const auto& each : report.findings) {
    findings.push_back({{"service", each.service},
                        {"verdict", keyOf(each.verdict)},
                        {"words", withoutTheUser(each.words, report)},
                        {"fix", each.fix.empty() ? Json() : Json(withoutTheUser(each.fix, report))}});
  }
  const Json all{{"version", report.version},
                 {"session", report.session},
                 {"desktop", report.desktop},
                 {"canDictate", canDictate(report.findings)},
                 {"findings", std::move(findings)}};
  return all.dump(2, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace);
}

}  // namespace tavelo
