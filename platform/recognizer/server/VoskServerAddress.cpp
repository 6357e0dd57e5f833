#include "platform/recognizer/server/VoskServerAddress.h"

namespace tavelo::recognizer {
namespace {

constexpr int usualPort = 2700;
constexpr int usualSecurePort = 443;

}  // namespace

VoskServerAddress VoskServerAddress::parse(const std::string& text) {
  QUrl url{QString::fromStdString(text), QUrl::StrictMode};
  const auto refuse = [&](const std::string& why) {
    return VoskServerAddress{std::nullopt, "\"" + text + "\" is no recogniser's address: " + why};
  };
  if (!url.isValid()) return refuse("it must look like ws://host:port");
  const bool secure = url.scheme() == "wss";
  if (!secure && url.scheme() != "ws") return refuse("it must begin with ws:// or wss://");
  if (url.host().isEmpty()) return refuse("the host is missing");
  if (url.port() == 0) return refuse("0 is no port");
  if (url.hasFragment()) return refuse("it must not contain a #");
  if (url.port() < 0) url.setPort(secure ? usualSecurePort : usualPort);
  return {std::move(url), {}};
}

}  // namespace tavelo::recognizer
