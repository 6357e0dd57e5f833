// Uses the accessibility of this desktop on command, for the tests on a virtual desktop. Reads commands from
// standard input. Answers each with a line on standard output: the command, its result, and the milliseconds
// that its turn of the main queue took. Ends with the input.

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <variant>

#include "app/LinuxWiring.h"
#include "insertion/EditMenu.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "tests/desktop/CommandReader.h"

namespace tavelo {
namespace {

using platform::AXError;

/// A running application that only has a process.
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
  void perform(const std::string& name, const std::string& text) {
    const auto start = platform_.clock.uptime();
    const std::string answer = commands_.at(name)(replaced(text, "\\n", "\n"));
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

  /// `text` is "LOCATION LENGTH".
  std::string select(const std::string& text) {
    std::size_t end = 0;
    const long location = std::stol(text, &end);
    return write(platform::ax::selectedTextRange, platform::AXRange{location, std::stol(text.substr(end))});
  }

  std::string paste(const std::string& process) {
    Application application(std::stoi(process));
    return EditMenu().pressPasteMenuItem(application, [] { return true; }) ? "pressed" : "not pressed";
  }

  LinuxWiring wiring_;
  const platform::Platform& platform_ = platform::current();
  platform::Accessibility& accessibility_ = platform_.accessibility;
  platform::AXUIElementRef element_;
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
  const CommandReader reader_{platform_.mainQueue,
                              [this](const auto& name, const auto& text) { perform(name, text); }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const tavelo::Probe probe;
  return QCoreApplication::exec();
}
