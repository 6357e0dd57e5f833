// Calls the accessibility of this desktop on command, for the tests on a virtual desktop. A line on standard
// input is a command; the answer is a line on standard output: the command, what came of it, and the
// milliseconds that its turn of the main queue took. Ends with the input.

#include <QApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <variant>

#include <unistd.h>

#include "app/LinuxWiring.h"
#include "insertion/EditMenu.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"

namespace tavelo {
namespace {

using platform::AXError;

/// A running application of which only the process matters.
class Application final : public platform::RunningApplication {
 public:
  explicit Application(platform::ProcessIdentifier process) : process_(process) {}
  std::optional<std::string> localizedName() const override { return std::nullopt; }
  std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
  platform::ProcessIdentifier processIdentifier() const override { return process_; }
  bool isTerminated() const override { return false; }
  bool activate(platform::ActivationOptions) override { return false; }

 private:
  platform::ProcessIdentifier process_;
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

std::string described(AXError error) { return "error " + std::to_string(static_cast<int>(error)); }

class Probe final {
 public:
  Probe() : input_(STDIN_FILENO, QSocketNotifier::Read) {
    QObject::connect(&input_, &QSocketNotifier::activated, &input_, [this] { readInput(); });
  }

 private:
  void readInput() {
    char chunk[4096];
    const auto count = ::read(STDIN_FILENO, chunk, sizeof chunk);
    if (count <= 0) return QCoreApplication::quit();
    pending_.append(chunk, static_cast<std::size_t>(count));
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
      const std::string line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      platform_.mainQueue.async([this, line] { perform(line); });
    }
  }

  void perform(const std::string& line) {
    const auto space = line.find(' ');
    const std::string name = line.substr(0, space);
    const std::string text = space == std::string::npos ? "" : replaced(line.substr(space + 1), "\\n", "\n");
    const auto start = platform_.clock.uptime();
    const std::string answer = commands_.at(name)(text);
    const std::chrono::duration<double, std::milli> taken = platform_.clock.uptime() - start;
    std::printf("%s: %s [%.1f ms]\n", name.c_str(), replaced(answer, "\n", "\\n").c_str(), taken.count());
    std::fflush(stdout);
  }

  std::string read(const platform::AXUIElementRef& element, const std::string& attribute) {
    platform::AXValue value;
    const auto error = accessibility_.copyAttributeValue(element, attribute, value);
    if (error != AXError::success) return described(error);
    if (const auto* text = std::get_if<std::string>(&value))
      return text->size() > 1000 ? std::to_string(text->size()) + " bytes" : *text;
    if (const auto* range = std::get_if<platform::AXRange>(&value))
      return std::to_string(range->location) + "+" + std::to_string(range->length);
    if (const auto* found = std::get_if<platform::AXUIElementRef>(&value)) {
      element_ = *found;
      return "found";
    }
    return "other";
  }

  std::string write(const std::string& attribute, const platform::AXValue& value) {
    const auto error = accessibility_.setAttributeValue(element_, attribute, value);
    return error == AXError::success ? "done" : described(error);
  }

  /// "LOCATION LENGTH"
  std::string select(const std::string& text) {
    std::size_t end = 0;
    const long location = std::stol(text, &end);
    return write(platform::ax::selectedTextRange, platform::AXRange{location, std::stol(text.substr(end))});
  }

  std::string paste(const std::string& process) {
    Application application(std::stoi(process));
    return EditMenu().pressPasteMenuItem(application) ? "pressed" : "not pressed";
  }

  LinuxWiring wiring_;
  const platform::Platform& platform_ = platform::current();
  platform::Accessibility& accessibility_ = platform_.accessibility;
  platform::AXUIElementRef element_;
  QSocketNotifier input_;
  std::string pending_;
  const std::map<std::string, std::function<std::string(const std::string&)>> commands_{
      {"trusted",
       [this](const std::string& prompt) {
         return accessibility_.isProcessTrustedWithOptions({.prompt = prompt == "prompt"}) ? "yes" : "no";
       }},
      {"focus",
       [this](const std::string&) {
         return read(accessibility_.createSystemWide(), platform::ax::focusedUIElement);
       }},
      {"value", [this](const std::string&) { return read(element_, platform::ax::value); }},
      {"range", [this](const std::string&) { return read(element_, platform::ax::selectedTextRange); }},
      {"selected", [this](const std::string&) { return read(element_, platform::ax::selectedText); }},
      {"insert", [this](const std::string& text) { return write(platform::ax::selectedText, text); }},
      {"replace", [this](const std::string& text) { return write(platform::ax::value, text); }},
      {"select", [this](const std::string& text) { return select(text); }},
      {"paste", [this](const std::string& process) { return paste(process); }},
  };
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const tavelo::Probe probe;
  return QCoreApplication::exec();
}
