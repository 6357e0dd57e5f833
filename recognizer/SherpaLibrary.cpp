#include "recognizer/SherpaLibrary.h"

#include <charconv>
#include <optional>
#include <string_view>

#include "language/Language.h"
#include "language/Texts.h"
#include "recognizer/SherpaLayout.h"

namespace tavelo::recognition::sherpa {
namespace {

using language::say;
namespace words = language::words;

struct Version {
  int major = 0;
  int minor = 0;

  auto operator<=>(const Version&) const = default;
};

/// The version whose structures `SherpaInterface.h` has. Those of older ones differ.
constexpr Version known{1, 13};

std::optional<Version> parse(std::string_view text) {
  Version version;
  const auto [dot, error] = std::from_chars(text.data(), text.data() + text.size(), version.major);
  if (error != std::errc{} || dot == text.data() + text.size() || *dot != '.') return std::nullopt;
  const auto minor = std::from_chars(dot + 1, text.data() + text.size(), version.minor);
  if (minor.ec != std::errc{}) return std::nullopt;
  return version;
}

}  // namespace

Library::Opening Library::open(const std::string& file) {
  auto opening = SharedLibrary::open(file);
  if (!opening.library) return {nullptr, opening.failure};
  std::unique_ptr<Library> library{new Library};
  library->file_ = std::move(opening.library);
  if (auto failure = library->resolve(file); !failure.empty()) return {nullptr, std::move(failure)};
  const auto version = parse(library->version_);
  if (!version || *version < known) return {nullptr, say(words::sherpaTooOld, {file, library->version_})};
  if (*version > known)
    if (auto reason = confirmLayout(library->functions_); !reason.empty())
      return {nullptr, say(words::sherpaTooNew, {file, library->version_, reason})};
  return {std::move(library), {}};
}

/// Asks the version and looks up the functions. Returns what is wrong; empty when nothing is.
std::string Library::resolve(const std::string& file) {
  std::string missing;
  const auto find = [&](const char* name, auto& function) {
    const std::string symbol = std::string{"SherpaOnnx"} + name;
    if (!file_->find(symbol.c_str(), function) && missing.empty()) missing = symbol;
  };
  find("GetVersionStr", functions_.version);
  if (!missing.empty()) return say(words::notSherpa, {file, missing});
  const auto failure = guarded([this] {
    const char* version = functions_.version();
    if (version != nullptr) version_ = version;
  });
  if (!failure.empty()) return file + ": " + failure;

  find("CreateOfflineRecognizer", functions_.createOffline);
  find("DestroyOfflineRecognizer", functions_.destroyOffline);
  find("CreateOfflineStream", functions_.createOfflineStream);
  find("DestroyOfflineStream", functions_.destroyOfflineStream);
  find("AcceptWaveformOffline", functions_.acceptOffline);
  find("DecodeOfflineStream", functions_.decodeOffline);
  find("GetOfflineStreamResult", functions_.offlineResult);
  find("DestroyOfflineRecognizerResult", functions_.destroyOfflineResult);
  find("CreateOnlineRecognizer", functions_.createOnline);
  find("DestroyOnlineRecognizer", functions_.destroyOnline);
  find("CreateOnlineStream", functions_.createOnlineStream);
  find("DestroyOnlineStream", functions_.destroyOnlineStream);
  find("OnlineStreamAcceptWaveform", functions_.acceptOnline);
  find("OnlineStreamInputFinished", functions_.endOnline);
  find("IsOnlineStreamReady", functions_.isReady);
  find("DecodeOnlineStream", functions_.decodeOnline);
  find("GetOnlineStreamResult", functions_.onlineResult);
  find("DestroyOnlineRecognizerResult", functions_.destroyOnlineResult);
  find("OnlineStreamIsEndpoint", functions_.isEndpoint);
  find("OnlineStreamReset", functions_.reset);
  return missing.empty() ? missing : say(words::libraryLacks, {file, missing});
}

}  // namespace tavelo::recognition::sherpa
