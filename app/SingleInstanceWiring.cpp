#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "app/SingleInstance.h"
#include "language/Language.h"
#include "language/Texts.h"
#include "platform/posix/FolderLock.h"
#include "platform/posix/LineClient.h"
#include "platform/posix/LineServer.h"

namespace tavelo {
namespace {

constexpr std::string_view takenLine = "taken\n";
constexpr std::array messageLines{std::pair{InstanceMessage::showMenu, "show-menu"},
                                  std::pair{InstanceMessage::insertLastText, "insert-last"},
                                  std::pair{InstanceMessage::startListening, "listen-start"},
                                  std::pair{InstanceMessage::stopListening, "listen-stop"},
                                  std::pair{InstanceMessage::toggleListening, "listen-toggle"},
                                  std::pair{InstanceMessage::cancelListening, "listen-cancel"},
                                  std::pair{InstanceMessage::setUp, "set-up"},
                                  std::pair{InstanceMessage::examine, "examine"},
                                  std::pair{InstanceMessage::forgetHistory, "forget-history"},
                                  std::pair{InstanceMessage::restart, "restart"}};

std::optional<InstanceMessage> messageOf(const std::string& line) {
  const auto found =
      std::ranges::find_if(messageLines, [&](const auto& each) { return line == each.second; });
  if (found == messageLines.end()) return std::nullopt;
  return found->first;
}

std::string lineOf(InstanceMessage message) {
  return std::ranges::find_if(messageLines, [&](const auto& each) { return message == each.first; })->second;
}

InstanceReply replyOf(const posix::LineAnswer& answer) {
  using enum posix::LineAnswer::Outcome;
  if (answer.outcome == nobody) return {.answer = InstanceAnswer::nobody, .words = {}};
  if (answer.outcome != answered || !answer.text.starts_with(takenLine)) return {};
  return {.answer = InstanceAnswer::taken, .words = answer.text.substr(takenLine.size())};
}

}  // namespace

struct SingleInstance::Files {
  explicit Files(const std::filesystem::path& folder)
      : socket((folder / "tavelo.socket").string()), lock(folder, "tavelo.lock") {}

  std::string socket;
  posix::FolderLock lock;
};

SingleInstance::SingleInstance(const std::filesystem::path& folder, std::chrono::milliseconds patience)
    : patience_(patience), files_(folder.empty() ? nullptr : std::make_unique<Files>(folder)) {
  if (!files_) errorText_ = language::say(language::words::noRuntimeFolder);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim() {
  if (!files_) return false;
  const bool taken = files_->lock.take();
  errorText_ = files_->lock.errorText();
  return taken;
}

std::shared_ptr<const void> SingleInstance::listen(platform::MainQueue& mainQueue, Received received) {
  auto answerOf = [received = std::move(received)](const std::string& line) -> std::optional<std::string> {
    const auto space = line.find(' ');
    const auto message = messageOf(line.substr(0, space));
    const auto argument = space == std::string::npos ? std::string() : line.substr(space + 1);
    // Only one has an argument.
    if (!message || argument.empty() == (message == InstanceMessage::forgetHistory)) return std::nullopt;
    return std::string(takenLine) + received(*message, argument);
  };
  return posix::LineServer::listen(files_->socket, patience_, mainQueue, std::move(answerOf), errorText_);
}

InstanceReply SingleInstance::send(InstanceMessage message, bool waitsForStart,
                                   const std::string& argument) const {
  if (!files_) return {.answer = InstanceAnswer::nobody, .words = {}};
  return replyOf(posix::askLine(files_->socket,
                                lineOf(message) + (argument.empty() ? "" : " " + argument) + '\n', patience_,
                                waitsForStart));
}

}  // namespace tavelo
